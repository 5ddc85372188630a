// Fuzzes Windows Address Books.

#include "fuzz/Targets.h"

#include "transfer/import/WabFile.h"

namespace kalmo::fuzz {

void wabFiles(const QByteArray& bytes)
{
    const transfer::WabBook book = transfer::readWabFile(bytes);
    require(book.fault == transfer::WabFault::None || book.contacts.empty());
    qsizetype letters = 0;
    for (const transfer::WabContact& contact : book.contacts)
        letters += contact.surname.size() + contact.homePhone.size() + contact.email1.size();
    require(letters <= bytes.size()); // no byte comes twice
}

} // namespace kalmo::fuzz
