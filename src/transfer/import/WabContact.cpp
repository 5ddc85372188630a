#include "transfer/import/WabContact.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace kalmo::transfer {

namespace {

struct TagField
{
    quint32 tag;
    QString WabContact::*field;
};

constexpr std::array<TagField, 21> tagFields = {{
    {tags::displayName, &WabContact::displayName},
    {tags::givenName, &WabContact::givenName},
    {tags::businessPhone, &WabContact::businessPhone},
    {tags::homePhone, &WabContact::homePhone},
    {tags::surname, &WabContact::surname},
    {tags::company, &WabContact::company},
    {tags::mobilePhone, &WabContact::mobilePhone},
    {tags::businessFax, &WabContact::businessFax},
    {tags::homeFax, &WabContact::homeFax},
    {tags::businessCountry, &WabContact::businessCountry},
    {tags::businessCity, &WabContact::businessCity},
    {tags::businessStreet, &WabContact::businessStreet},
    {tags::businessPostalCode, &WabContact::businessPostalCode},
    {tags::middleName, &WabContact::middleName},
    {tags::nickname, &WabContact::nickname},
    {tags::homePage, &WabContact::homePage},
    {tags::businessPage, &WabContact::businessPage},
    {tags::homeCity, &WabContact::homeCity},
    {tags::homeCountry, &WabContact::homeCountry},
    {tags::homePostalCode, &WabContact::homePostalCode},
    {tags::homeStreet, &WabContact::homeStreet},
}};

} // namespace

QString WabContact::*fieldOfTag(quint32 tag)
{
    const auto found = std::find_if(tagFields.begin(), tagFields.end(),
                                    [tag](const TagField& row) { return row.tag == tag; });
    return found == tagFields.end() ? nullptr : found->field;
}

void storeEmails(WabContact& contact, const QString& addresses)
{
    const QStringList parts = addresses.split(u'|');
    contact.email1 = parts.first();
    if (parts.size() > 1)
        contact.email2 = parts[1];
}

} // namespace kalmo::transfer
