#include "cli/Commands.h"
#include "cli/ContactBook.h"
#include "cli/ContactFiles.h"
#include "cli/EntryFiles.h"
#include "cli/FindPhone.h"
#include "cli/OutputFile.h"
#include "cli/ReadList.h"
#include "cli/WriteList.h"
#include "link/PhoneModels.h"

namespace kalmo::cli {

using phonedata::Store;

namespace {

/// Tells that a file can't be saved under that name, if it can't; nothing is read from a phone for it then.
bool isRefusedName(Job& job, bool fits, const QString& endings)
{
    const QString path = job.invocation.value(u"--output"_s);
    if (path.isEmpty() || fits)
        return false;
    job.out.error(u"%1 ends neither in %2 nor in .json."_s.arg(path, endings));
    return true;
}

} // namespace

ExitStatus runPhonebookRead(Job& job)
{
    const QString path = job.invocation.value(u"--output"_s);
    const bool fitsClassic = hasEntryEnding(path, Store::Phonebook);
    const bool fitsContacts = hasContactEnding(path);
    if (isRefusedName(job, fitsClassic || fitsContacts, u".tel, .csv, .vcf"_s))
        return ExitWrongUse;
    if (!canSaveOutput(job))
        return ExitFailed;
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    const bool isClassic = link::isClassic(job.phoneType());
    if (isRefusedName(job, isClassic ? fitsClassic : fitsContacts, isClassic ? u".tel"_s : u".csv, .vcf"_s))
        return ExitWrongUse;
    return isClassic ? showList(job, Store::Phonebook) : showContacts(job);
}

ExitStatus runPhonebookWrite(Job& job)
{
    return runWrite(job, Store::Phonebook);
}

ExitStatus runProvidersRead(Job& job)
{
    const bool fits = hasEntryEnding(job.invocation.value(u"--output"_s), Store::Providers);
    if (isRefusedName(job, fits, u".prv"_s))
        return ExitWrongUse;
    if (!canSaveOutput(job))
        return ExitFailed;
    const ExitStatus found = findPhone(job);
    return found == ExitDone ? showList(job, Store::Providers) : found;
}

ExitStatus runProvidersWrite(Job& job)
{
    return runWrite(job, Store::Providers);
}

} // namespace kalmo::cli
