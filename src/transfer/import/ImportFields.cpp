#include "transfer/import/ImportFields.h"

#include "link/PhoneModels.h"
#include "phonedata/PhoneCharacters.h"

namespace kalmo::transfer {

using phonedata::longestEmail;
using phonedata::longestName;
using phonedata::longestNumber;

namespace {

// The first headings are those of Kalmo's own files. Those of mail programs, telephones,
// spreadsheets and routers follow, the likeliest first.
constexpr std::array<ImportField, 3> classicFields = {{
    {u"name", u"Name", FieldKind::Name, longestName,
     u"Name|Anzeigename|Vollständiger Name|Kontaktname|Nachname|Display Name|Full Name|Last Name|Family Name|"
     u"Surname|realName|Firma|Company"},
    {u"number", u"Telefonnummer", FieldKind::Number, longestNumber,
     u"Nummer|Telefonnummer|Rufnummer|Telefon|Tel.|Telefon (privat)|Telefon privat|Telefon Privat|Festnetz|"
     u"Mobiltelefon|Mobil|Handy|Telefon geschäftlich|Telefon (geschäftlich)|Number|Phone|Phone Number|Home "
     u"Phone|"
     u"Mobile Phone|Mobile Number|Business Phone|Work Phone|Phone 1 - Value"},
    {u"birthday", u"Geburtstag", FieldKind::Birthday, 0,
     u"Jahrestag|Geburtstag|Geburtsdatum|Birthday|Date of Birth|Anniversary"},
}};

constexpr std::array<ImportField, mostFields> vcardFields = {{
    {u"lastName", u"Nachname", FieldKind::Name, longestName,
     u"Name|Nachname|Familienname|Last Name|Family Name|Surname|Anzeigename|Display Name|Full Name"},
    {u"firstName", u"Vorname", FieldKind::Name, longestName, u"Vorname|First Name|Given Name"},
    {u"home", u"Telefon", FieldKind::Number, longestNumber,
     u"Telefon|Nummer|Telefonnummer|Rufnummer|Telefon (privat)|Telefon privat|Tel. privat|Privat|Festnetz|"
     u"Home Phone|Phone|Phone Number|Phone 1 - Value"},
    {u"mobile", u"Tel. (Mobil)", FieldKind::Number, longestNumber,
     u"Tel. (Mobil)|Mobiltelefon|Mobil|Handy|Mobilnummer|Handy privat|Mobile Phone|Mobile Number|Mobile|Cell "
     u"Phone|"
     u"Phone 2 - Value"},
    {u"work", u"Tel. (Büro)", FieldKind::Number, longestNumber,
     u"Tel. (Büro)|Telefon geschäftlich|Telefon (geschäftlich)|Telefon (gesch.)|Geschäftlich|Büro|Dienstlich|"
     u"Business Phone|Work Phone|Phone 3 - Value"},
    {u"email", u"Email", FieldKind::Email, longestEmail,
     u"Email|eMail|E-Mail-Adresse|E-Mail|Mail|Primäre E-Mail-Adresse|E-mail Address|Primary Email|"
     u"E-mail 1 - Value"},
    {u"birthday", u"Jahrestag", FieldKind::Birthday, 0,
     u"Jahrestag|Geburtstag|Geburtsdatum|Birthday|Date of Birth|Anniversary"},
}};

// The ends are fixed by this list: " G" is that of the private fax, and two kinds share " F".
constexpr std::array<SubNumberKind, subNumberCount> subNumbers = {{
    {u"home", u"Telefon privat", u"Einzelne Nummer für Telefon privat erzeugen", &WabContact::homePhone,
     u" P"},
    {u"mobile", u"Handy privat", u"Einzelne Nummer für Handy privat erzeugen", &WabContact::mobilePhone,
     u" H"},
    {u"home-fax", u"Fax privat", u"Einzelne Nummer für Fax privat erzeugen", &WabContact::homeFax, u" G"},
    {u"work", u"Tel.  geschäftlich", u"Einzelne Nummer für Telefon geschäftlich erzeugen",
     &WabContact::businessPhone, u" F"},
    {u"work-fax", u"Fax geschäftlich", u"Einzelne Nummer für Fax geschäftlich erzeugen",
     &WabContact::businessFax, u" F"},
}};

constexpr std::array<AddressField, 7> nameFields = {{
    {u"Nachname", tags::surname},
    {u"Vorname", tags::givenName},
    {u"Vorname 2", tags::middleName},
    {u"Anzeige", tags::displayName},
    {u"Rufname", tags::nickname},
    {u"Firma", tags::company},
    {notUsedText, notUsed},
}};

constexpr std::array<AddressField, 4> numberFields = {{
    {u"Telefon privat", tags::homePhone},
    {u"Handy privat", tags::mobilePhone},
    {u"Telefon geschäftlich", tags::businessPhone},
    {notUsedText, notUsed},
}};

constexpr std::array<AddressField, 3> emailFields = {{
    {u"eMail", tags::email},
    {u"eMail 2", tags::emails},
    {notUsedText, notUsed},
}};

} // namespace

Shape shapeFor(int phoneType)
{
    return link::hasVcards(phoneType) ? Shape::Vcard : Shape::Classic;
}

std::span<const ImportField> fieldsOf(Shape shape)
{
    return shape == Shape::Classic ? std::span<const ImportField>(classicFields)
                                   : std::span<const ImportField>(vcardFields);
}

std::span<const SubNumberKind, subNumberCount> subNumberKinds()
{
    return subNumbers;
}

std::span<const AddressField> nameChoices()
{
    return nameFields;
}

std::span<const AddressField> numberChoices()
{
    return numberFields;
}

std::span<const AddressField> emailChoices()
{
    return emailFields;
}

std::span<const AddressField> choicesOf(FieldKind kind)
{
    switch (kind) {
    case FieldKind::Name:
        return nameFields;
    case FieldKind::Number:
        return numberFields;
    case FieldKind::Email:
        return emailFields;
    case FieldKind::Birthday:
        break;
    }
    return {};
}

QString WabFieldByTag(const WabContact& contact, quint32 tag)
{
    if (tag == tags::email)
        return contact.email1;
    if (tag == tags::emails)
        return contact.email2;
    QString WabContact::*field = fieldOfTag(tag);
    return field ? contact.*field : QString();
}

} // namespace kalmo::transfer
