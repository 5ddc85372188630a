// Fuzzes files of cards.

#include "fuzz/Targets.h"

#include "transfer/import/Preview.h"
#include "transfer/import/VcardFile.h"

namespace kalmo::fuzz {

using namespace transfer;

void cardFiles(const QByteArray& bytes)
{
    const QDate today(2026, 11, 21);
    isVcardFile(bytes);
    const std::vector<WabContact> contacts = readVcardFile(bytes, today);
    require(contacts.size() <= static_cast<size_t>(bytes.size())); // each has taken some bytes
    for (const WabContact& contact : contacts)
        require(contact.homePhone.size() + contact.surname.size() <=
                2 * bytes.size()); // a byte of some
                                   // character sets is two
    RebuildPreview({.contacts = contacts}, Shape::Vcard, {}, {}, today);
    const Preview entries = RebuildPreview({.contacts = contacts}, Shape::Classic, {}, {}, today);
    require(entries.rows.size() <= contacts.size() * subNumberCount);
}

} // namespace kalmo::fuzz
