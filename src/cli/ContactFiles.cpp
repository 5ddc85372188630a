#include "cli/ContactFiles.h"

#include "app/CodePage.h"
#include "cli/InputFile.h"
#include "cli/Tables.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfFiles.h"

#include <QDate>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using phonedata::tVcfEntry;

namespace {

/// A field of a contact: its key in JSON, its heading, how long it may be in a phone, and whether it is a
/// number.
struct Field
{
    QStringView key;
    QStringView heading;
    QString tVcfEntry::*text;
    qsizetype longest;
    bool isNumber;
};

constexpr qsizetype anyLength = 0;

/// In the order of the window's list, which is that of the .csv file as well.
constexpr std::array<Field, 8> contactFields = {{
    {u"lastName", u"Last name", &tVcfEntry::lastName, 16, false},
    {u"firstName", u"First name", &tVcfEntry::firstName, 16, false},
    {u"home", u"Home", &tVcfEntry::home, 32, true},
    {u"mobile", u"Mobile", &tVcfEntry::mobile, 32, true},
    {u"work", u"Work", &tVcfEntry::work, 32, true},
    {u"email", u"E-mail", &tVcfEntry::email, 60, false},
    {u"birthday", u"Birthday", &tVcfEntry::birthday, anyLength, false},
    {u"luid", u"LUID", &tVcfEntry::luid, anyLength, false},
}};

const QString csvHeading = u"\"Nachname\",\"Vorname\","_s;
constexpr qsizetype csvFields = contactFields.size() - 1; // all but the LUID

bool isControl(QChar character)
{
    return character.category() == QChar::Other_Control;
}

/// What can't be in a contact at all, empty if there is nothing.
QString faultOfContact(const tVcfEntry& contact)
{
    for (const Field& field : contactFields) {
        const QString& text = contact.*(field.text);
        for (const QChar character : text) {
            if (character == u'\r' || character == u'\n' || character.isNull())
                return u"there is a line end or a NUL in \"%1\""_s.arg(field.key);
        }
        if (app::fromCp1252(app::toCp1252(text)) != text)
            return u"there is a letter in \"%1\" that no phone has"_s.arg(field.key);
    }
    return {};
}

/// The birthday of a displayed one, which may lack the time, or have seconds.
bool readBirthday(QString& text)
{
    static const QRegularExpression date(
        u"^([0-9]{1,2})\\.([0-9]{2})\\.([0-9]{4})\\s*([0-9]{2}:[0-9]{2}(:[0-9]{2})?)?$"_s);
    if (text.isEmpty())
        return true;
    const auto parts = date.match(text);
    if (!parts.hasMatch())
        return false;
    text = u"%1-%2-%3"_s.arg(parts.captured(3), parts.captured(2), parts.captured(1).rightJustified(2, u'0'));
    if (!parts.captured(4).isEmpty())
        text += u'T' + parts.captured(4);
    return true;
}

/// Whether it is none, that of zeros which phones have for none, or a day and time that there can be.
bool isBirthday(const QString& text)
{
    static const QRegularExpression form(
        u"^([0-9]{4}-[0-9]{2}-[0-9]{1,2})(?:T([0-9]{2}:[0-9]{2}(?::[0-9]{2})?))?$"_s);
    const auto parts = form.match(text);
    if (!parts.hasMatch())
        return text.isEmpty();
    const QString time = parts.captured(2);
    return (QDate::fromString(parts.captured(1), u"yyyy-MM-d"_s).isValid() ||
            parts.captured(1) == u"0000-00-00"_s) &&
           (time.isEmpty() || QTime::fromString(time, QString(u"hh:mm:ss"_s).first(time.size())).isValid());
}

/// A contact whose birthday is displayed as a whole: by fixed places, which a day of one digit moves.
tVcfEntry displayable(tVcfEntry contact)
{
    static const QRegularExpression shortDay(u"^[0-9]{4}-[0-9]{2}-[0-9](T|$)"_s);
    if (shortDay.match(contact.birthday).hasMatch())
        contact.birthday.insert(8, u'0');
    return contact;
}

bool readCsvLine(const QString& line, tVcfEntry& contact, QString& error)
{
    QStringList texts;
    if (!splitQuoted(line, texts) || texts.size() != csvFields) {
        error = u"expected seven fields: last name, first name, home, mobile, work, e-mail, birthday"_s;
        return false;
    }
    for (qsizetype index = 0; index < csvFields; ++index)
        contact.*(contactFields[static_cast<size_t>(index)].text) = texts[index];
    if (!readBirthday(contact.birthday)) {
        error = u"the birthday is not of the form \"21.03.1970  12:30\""_s;
        return false;
    }
    error = faultOfContact(contact);
    return error.isEmpty();
}

bool readJsonObject(const QJsonValue& value, tVcfEntry& contact, QString& error)
{
    if (!value.isObject()) {
        error = u"it is no object"_s;
        return false;
    }
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        const auto field = std::find_if(contactFields.begin(), contactFields.end(),
                                        [&](const Field& row) { return row.key == member.key(); });
        if (field == contactFields.end() || !member.value().isString()) {
            error = field == contactFields.end()
                        ? u"unknown key \"%1\""_s.arg(printable(member.key().left(40)))
                        : u"\"%1\" must be a text"_s.arg(member.key());
            return false;
        }
        contact.*(field->text) = member.value().toString();
    }
    error = faultOfContact(contact);
    return error.isEmpty();
}

} // namespace

QJsonArray contactJson(const Contacts& contacts)
{
    QJsonArray array;
    for (const tVcfEntry& contact : contacts) {
        QJsonObject object;
        for (const Field& field : contactFields)
            object.insert(field.key, contact.*(field.text));
        array.append(object);
    }
    return array;
}

QByteArray contactJsonBytes(const Contacts& contacts)
{
    return QJsonDocument(contactJson(contacts)).toJson(QJsonDocument::Indented);
}

QStringList contactHeadings()
{
    QStringList headings;
    for (const Field& field : contactFields)
        headings.append(field.heading.toString());
    return headings;
}

QStringList contactCells(const tVcfEntry& contact)
{
    QStringList cells;
    for (const Field& field : contactFields)
        cells.append(contact.*(field.text));
    return cells;
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

bool hasContactEnding(const QString& path)
{
    return endsIn(path, u".csv") || endsIn(path, u".json") || endsIn(path, u".vcf");
}

QByteArray contactFileBytes(const QString& path, const Contacts& contacts)
{
    if (endsIn(path, u".json"))
        return contactJsonBytes(contacts);
    if (endsIn(path, u".vcf")) {
        QByteArray cards;
        for (const tVcfEntry& contact : contacts)
            cards += phonedata::vcfCardBytes(displayable(contact));
        return cards;
    }
    const auto list = phonedata::makeVcfRows();
    for (const tVcfEntry& contact : contacts)
        list->add(phonedata::toRow(displayable(contact)));
    return phonedata::vcfCsvBytes(*list);
}

bool readContactCsv(const QByteArray& bytes, Contacts& contacts, QString& error)
{
    contacts.clear();
    QString text;
    if (!decodeInput(bytes, text, error))
        return false;
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        tVcfEntry contact;
        ++number;
        if (line.isEmpty() || (number == 1 && line.startsWith(csvHeading)))
            continue;
        if (!readCsvLine(line, contact, error)) {
            error = u"line %1: %2"_s.arg(number).arg(error);
            return false;
        }
        contacts.push_back(contact);
    }
    return true;
}

bool readContactJson(const QByteArray& bytes, Contacts& contacts, QString& error)
{
    contacts.clear();
    QJsonParseError fault;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &fault);
    if (fault.error != QJsonParseError::NoError) {
        error = u"line %1: this is no JSON: %2"_s.arg(lineOf(bytes, fault.offset)).arg(fault.errorString());
        return false;
    }
    const QJsonArray array = document.isObject() ? QJsonArray{document.object()} : document.array();
    for (qsizetype index = 0; index < array.size(); ++index) {
        tVcfEntry contact;
        if (!readJsonObject(array.at(index), contact, error)) {
            error = u"contact %1: %2"_s.arg(index + 1).arg(error);
            return false;
        }
        contacts.push_back(contact);
    }
    return true;
}

bool readContactFile(const QString& path, Contacts& contacts, QString& error)
{
    const bool isJson = endsIn(path, u".json");
    QByteArray bytes;
    if (!isJson && !endsIn(path, u".csv")) {
        error = u"%1 ends neither in .csv nor in .json"_s.arg(path);
        return false;
    }
    const bool isRead =
        readInputFile(path, bytes, error) &&
        (isJson ? readContactJson(bytes, contacts, error) : readContactCsv(bytes, contacts, error));
    if (isRead && contacts.empty())
        error = u"there is no contact in it"_s;
    if (isRead && !contacts.empty())
        return true;
    error = u"%1: %2"_s.arg(path, error);
    return false;
}

QStringList warningsAbout(const tVcfEntry& contact)
{
    static const QRegularExpression number(u"^[0-9#*+?]*$"_s);
    QStringList warnings;
    for (const Field& field : contactFields) {
        const QString& text = contact.*(field.text);
        if (std::any_of(text.begin(), text.end(), isControl))
            warnings.append(u"there is a control character in \"%1\""_s.arg(field.key));
        if (field.longest != anyLength && text.size() > field.longest)
            warnings.append(
                u"\"%1\" is longer than %2 characters"_s.arg(text, QString::number(field.longest)));
        if (field.isNumber && !number.match(text).hasMatch())
            warnings.append(u"\"%1\" is more than digits, #, *, + and ?"_s.arg(text));
    }
    if (!contact.hasNumber())
        warnings.append(u"it has no telephone number"_s);
    if (!isBirthday(contact.birthday))
        warnings.append(u"\"%1\" is no birthday of the form 1970-03-21T12:30"_s.arg(contact.birthday));
    const QString endangered = phonedata::endangeredCharacters(contact);
    if (!endangered.isEmpty())
        warnings.append(u"the phone may give back \"%1\" as something else"_s.arg(endangered));
    return warnings;
}

} // namespace kalmo::cli
