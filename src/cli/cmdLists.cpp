#include "cli/Commands.h"
#include "cli/ReadList.h"
#include "cli/WriteList.h"

namespace kalmo::cli {

using phonedata::Store;

ExitStatus runPhonebookRead(Job& job)
{
    return runRead(job, Store::Phonebook);
}

ExitStatus runPhonebookWrite(Job& job)
{
    return runWrite(job, Store::Phonebook);
}

ExitStatus runProvidersRead(Job& job)
{
    return runRead(job, Store::Providers);
}

ExitStatus runProvidersWrite(Job& job)
{
    return runWrite(job, Store::Providers);
}

} // namespace kalmo::cli
