#include "operations/ContactFields.h"

#include "app/CodePage.h"
#include "phonedata/PhoneCharacters.h"

#include <QRegularExpression>

#include <array>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::longestEmail;
using phonedata::longestName;
using phonedata::longestNumber;
using phonedata::tVcfEntry;

namespace {

constexpr std::array<ContactField, 8> fieldTable = {{
    {u"lastName", &tVcfEntry::lastName, longestName, false},
    {u"firstName", &tVcfEntry::firstName, longestName, false},
    {u"home", &tVcfEntry::home, longestNumber, true},
    {u"mobile", &tVcfEntry::mobile, longestNumber, true},
    {u"work", &tVcfEntry::work, longestNumber, true},
    {u"email", &tVcfEntry::email, longestEmail, false},
    {u"birthday", &tVcfEntry::birthday, anyLength, false},
    {u"luid", &tVcfEntry::luid, anyLength, false},
}};

} // namespace

std::span<const ContactField> contactFields()
{
    return fieldTable;
}

SavedListFault faultOf(const tVcfEntry& contact)
{
    for (const ContactField& field : fieldTable) {
        const QString& text = contact.*(field.text);
        if (text.contains(u'\r') || text.contains(u'\n') || text.contains(QChar()))
            return {.kind = FileFault::LineEnd, .detail = field.key.toString()};
        // A name or e-mail with any letter can be written as UTF-8.
        const bool isAnyText = !field.isNumber && field.longest != anyLength;
        if (!isAnyText && !app::fitsCp1252(text))
            return {.kind = FileFault::ForeignLetter, .detail = field.key.toString()};
    }
    return {};
}

QString contactName(const tVcfEntry& contact)
{
    const QString name = QString(contact.firstName + u' ' + contact.lastName).trimmed();
    for (const QString& text : {name, contact.home, contact.mobile, contact.work, contact.email}) {
        if (!text.isEmpty())
            return text;
    }
    return contact.luid;
}

bool holdsNothing(const tVcfEntry& contact)
{
    return contact == tVcfEntry{.luid = contact.luid};
}

tVcfEntry withLongDay(tVcfEntry contact)
{
    static const QRegularExpression shortDay(u"^[0-9]{4}-[0-9]{2}-[0-9](T|$)"_s);
    if (shortDay.match(contact.birthday).hasMatch())
        contact.birthday.insert(8, u'0');
    return contact;
}

} // namespace kalmo::operations
