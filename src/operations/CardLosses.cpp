#include "operations/CardLosses.h"

#include "operations/ContactFields.h"
#include "phonedata/VcfCodec.h"

#include <algorithm>

namespace kalmo::operations {

using phonedata::ContactCard;
using phonedata::tVcfEntry;

namespace {

// It has no LUID, so it is no contact of its own.
const QByteArray encodedNeighbour = "BEGIN:VCARD\r\nN;ENCODING=QUOTED-PRINTABLE:\r\nEND:VCARD\r\n";

bool isName(QString tVcfEntry::*field)
{
    return field == &tVcfEntry::lastName || field == &tVcfEntry::firstName;
}

/// The contact as the phonebook may give it back.
std::vector<tVcfEntry> readBackEntries(const tVcfEntry& entry, const ContactCard* held)
{
    std::vector<tVcfEntry> entries;
    for (const bool encodesNames : {false, true}) {
        QByteArray card = phonedata::VcfBuildItem(entry, encodesNames, held);
        card.replace("\r\nEMAIL;INTERNET", "\r\nEMAIL"); // as the phone gives it back
        for (const QByteArray& object : {card, card + encodedNeighbour}) {
            const auto cards = phonedata::parseCards(object).cards;
            entries.push_back(cards.empty() ? tVcfEntry{} : cards.front().entry);
        }
    }
    return entries;
}

/// A phone gives a birthday back in another form.
bool saySame(const tVcfEntry& left, const tVcfEntry& right, QString tVcfEntry::*field)
{
    return field == &tVcfEntry::birthday
               ? phonedata::normalBirthday(left.birthday) == phonedata::normalBirthday(right.birthday)
               : left.*field == right.*field;
}

bool isEdited(const tVcfEntry& entry, QString tVcfEntry::*field, const ContactCard* held)
{
    return !held || !saySame(entry, held->entry, field);
}

/// Returns true for a field whose line is made new. Both halves of a name are one line.
bool isMadeNew(const tVcfEntry& entry, QString tVcfEntry::*field, const ContactCard* held)
{
    if (!isName(field))
        return isEdited(entry, field, held);
    return isEdited(entry, &tVcfEntry::lastName, held) || isEdited(entry, &tVcfEntry::firstName, held);
}

/// The contact without the fields whose lines go back as they are.
tVcfEntry newPart(const tVcfEntry& entry, const ContactCard* held)
{
    tVcfEntry part;
    for (const ContactField& field : contactFields()) {
        if (isMadeNew(entry, field.text, held))
            part.*field.text = entry.*field.text;
    }
    return part;
}

} // namespace

CardLosses lossesWhenSent(const tVcfEntry& entry, const ContactCard* held)
{
    CardLosses losses{.characters = phonedata::endangeredCharacters(newPart(entry, held))};
    const std::vector<tVcfEntry> back = readBackEntries(entry, held);
    const tVcfEntry inPhone = held ? phonedata::writtenEntry(*held) : tVcfEntry{};
    for (const ContactField& field : contactFields()) {
        if (field.text == &tVcfEntry::luid || !isMadeNew(entry, field.text, held))
            continue;
        const QString& text = entry.*field.text;
        const auto other = std::ranges::find_if(
            back, [&](const tVcfEntry& read) { return !saySame(read, entry, field.text); });
        if (other != back.end())
            losses.edited.push_back({text, *other.*field.text});
        if (!isEdited(entry, field.text, held) && !saySame(inPhone, entry, field.text))
            losses.hidden.push_back({inPhone.*field.text, text});
    }
    return losses;
}

QStringList contactsBeyondFields(const phonedata::VcfCards& cards)
{
    QStringList names;
    for (const ContactCard& card : cards.cards) {
        if (!phonedata::otherLines(card.raw).empty() || phonedata::writtenEntry(card) != card.entry)
            names.append(contactName(card.entry));
    }
    return names;
}

} // namespace kalmo::operations
