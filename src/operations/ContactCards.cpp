// Contacts as vCards of version 2.1.

#include "operations/ContactFields.h"
#include "operations/ContactFiles.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"
#include "phonedata/VcfText.h"

#include <algorithm>

namespace kalmo::operations {

using phonedata::CardLine;
using phonedata::ContactCard;
using phonedata::tVcfEntry;

namespace {

/// The field that a line of a card holds, null for a line that no field is for.
QString tVcfEntry::*fieldOf(const QByteArrayList& key)
{
    const auto says = [&key](const QByteArray& word) {
        return key.contains(word) || key.contains("TYPE=" + word);
    };
    if (key.first() == "EMAIL")
        return &tVcfEntry::email;
    if (key.first() == "BDAY")
        return &tVcfEntry::birthday;
    if (key.first() == "X-IRMC-LUID")
        return &tVcfEntry::luid;
    if (key.first() != "TEL" || says("FAX"))
        return nullptr;
    return says("CELL")   ? &tVcfEntry::mobile
           : says("WORK") ? &tVcfEntry::work
           : says("HOME") ? &tVcfEntry::home
                          : nullptr;
}

/// Reads one line. A field that another line has filled already is a fault.
FileFault readLine(const CardLine& line, tVcfEntry& contact)
{
    const QByteArrayList key = line.key.toUpper().split(';');
    const QString text = phonedata::lineText(line);
    if (key.first() == "VERSION" && text.trimmed() != u"2.1")
        return FileFault::OtherVersion;
    if (key.first() == "N") {
        if (!contact.lastName.isEmpty() || !contact.firstName.isEmpty())
            return FileFault::FieldTwice;
        std::tie(contact.lastName, contact.firstName) = phonedata::splitName(text);
        while (contact.firstName.endsWith(u';')) // other programs end the name with its empty parts
            contact.firstName.chop(1);
        return FileFault::None;
    }
    QString tVcfEntry::*const field = fieldOf(key);
    if (!field || text.isEmpty())
        return FileFault::None;
    if (!(contact.*field).isEmpty())
        return FileFault::FieldTwice;
    contact.*field = phonedata::VcfUnesc(text);
    return FileFault::None;
}

SavedListFault readCard(const QByteArray& raw, tVcfEntry& contact)
{
    for (const CardLine& line : phonedata::cardLines(raw)) {
        const FileFault fault = readLine(line, contact);
        if (fault != FileFault::None)
            return {.kind = fault, .detail = QString::fromLatin1(line.key)};
    }
    return faultOf(contact);
}

} // namespace

QByteArray contactCardBytes(const SavedList& list)
{
    QByteArray cards;
    for (const tVcfEntry& contact : list.contacts)
        cards += phonedata::vcfCardBytes(withLongDay(contact));
    return cards;
}

QByteArray contactCardBytes(const phonedata::ContactReading& reading)
{
    QByteArray cards;
    for (const ContactCard& card : reading.cards.cards)
        cards += phonedata::vcfCardBytes(withLongDay(phonedata::writtenEntry(card)),
                                         phonedata::otherLines(card.raw));
    return cards;
}

QStringList droppedKeys(const QByteArray& bytes)
{
    static const QByteArrayList known{"N", "FN", "BEGIN", "VERSION", "END", ""};
    QByteArray text = bytes;
    text.replace("\r\n", "\n").replace('\r', '\n').replace('\n', "\r\n");
    QStringList dropped;
    for (const CardLine& line : phonedata::cardLines(text)) {
        const QByteArrayList key = line.key.toUpper().split(';');
        const QString name = QString::fromLatin1(line.key.toUpper());
        const bool isRead = known.contains(key.first()) || fieldOf(key);
        if (line.hasColon && !isRead && !line.value.isEmpty() && !dropped.contains(name))
            dropped.append(name);
    }
    return dropped;
}

bool readContactCards(const QByteArray& bytes, const ReadingRules&, SavedList& list, SavedListFault& fault)
{
    list.contacts.clear();
    list.dropped = droppedKeys(bytes);
    QByteArray text = bytes;
    text.replace("\r\n", "\n").replace('\r', '\n').replace('\n', "\r\n");
    const QByteArray begin = "BEGIN:VCARD\r\n";
    const QByteArray end = "\r\nEND:VCARD";
    for (qsizetype at = text.indexOf(begin); at >= 0; at = text.indexOf(begin, at + 1)) {
        const qsizetype stop = text.indexOf(end, at);
        const qsizetype next = text.indexOf(begin, at + 1);
        tVcfEntry contact;
        fault = stop < 0 || (next >= 0 && next < stop) ? SavedListFault{.kind = FileFault::CardWithoutEnd}
                                                       : readCard(text.sliced(at, stop - at), contact);
        if (fault.kind != FileFault::None) {
            fault.place = SavedListFault::Place::Entry;
            fault.number = static_cast<int>(list.contacts.size()) + 1;
            return false;
        }
        list.contacts.push_back(contact);
    }
    if (list.contacts.empty())
        fault = {.kind = FileFault::NothingInIt};
    return !list.contacts.empty();
}

} // namespace kalmo::operations
