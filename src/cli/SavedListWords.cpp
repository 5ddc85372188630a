#include "cli/SavedListWords.h"

#include "cli/Tables.h"
#include "operations/SavedText.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::FileFault;
using operations::SavedKind;
using operations::SavedListFault;

namespace {

constexpr qsizetype longestKey = 40;

QString fieldsInWords(SavedKind kind)
{
    switch (kind) {
    case SavedKind::Phonebook:
        return u"expected \"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\""_s;
    case SavedKind::Providers:
        return u"expected \"name\",\"number\""_s;
    case SavedKind::Contacts:
        break;
    }
    return u"expected seven fields: last name, first name, home, mobile, work, e-mail, birthday"_s;
}

QString faultOfFile(const SavedListFault& fault, SavedKind kind)
{
    switch (fault.kind) {
    case FileFault::NoSuchFile:
        return u"there is no such file"_s;
    case FileFault::NoRegularFile:
        return u"it is no regular file"_s;
    case FileFault::TooLarge:
        return u"it is larger than %1 MB"_s.arg(operations::largestSavedFile / app::megabyte);
    case FileFault::NotReadable:
        return u"it can't be read"_s;
    case FileFault::Utf8Text:
        return u"the text is UTF-8, but such files are Windows-1252; use a .json file"_s;
    case FileFault::NoJson:
        return u"this is no JSON: "_s + fault.detail;
    case FileFault::NoArray:
        return u"expected an array of entries"_s;
    case FileFault::NothingInIt:
        return kind == SavedKind::Contacts
                   ? u"there is no contact in it"_s
                   : u"there is no entry in it; to erase the list, write a .json file that holds []"_s;
    default:
        return {};
    }
}

QString faultOfEntry(const SavedListFault& fault, SavedKind kind)
{
    const QString key = printable(fault.detail.left(longestKey));
    switch (fault.kind) {
    case FileFault::FieldCount:
        return fieldsInWords(kind);
    case FileFault::VipWord:
        return u"VIP is neither \"Ja\" nor empty"_s;
    case FileFault::NoObject:
        return u"it is no object"_s;
    case FileFault::UnknownKey:
        return u"unknown key \"%1\""_s.arg(key);
    case FileFault::NotText:
        return u"\"%1\" must be a text"_s.arg(key);
    case FileFault::NotBoolean:
        return u"\"%1\" must be true or false"_s.arg(key);
    case FileFault::NameOrNumberMissing:
        return u"\"name\" and \"number\" must be there"_s;
    case FileFault::LineEnd:
        return key.isEmpty() ? u"there is a line end that can't be sent to a phone"_s
                             : u"there is a line end or a NUL in \"%1\""_s.arg(key);
    case FileFault::ForeignLetter:
        return u"there is a letter in \"%1\" that no phone has"_s.arg(key);
    case FileFault::Date:
        return u"the date is not of the form \"24.12  08:30\""_s;
    case FileFault::Birthday:
        return u"the birthday is not of the form \"21.03.1970  12:30\""_s;
    case FileFault::CardWithoutEnd:
        return u"the card has no END:VCARD"_s;
    case FileFault::OtherVersion:
        return u"it is no vCard of version 2.1"_s;
    case FileFault::FieldTwice:
        return u"there is a second line \"%1\", but a phone holds one"_s.arg(key);
    default:
        return {};
    }
}

QString placeInWords(const SavedListFault& fault, SavedKind kind)
{
    switch (fault.place) {
    case SavedListFault::Place::WholeFile:
        break;
    case SavedListFault::Place::Line:
        return u"line %1: "_s.arg(fault.number);
    case SavedListFault::Place::Entry:
        return (kind == SavedKind::Contacts ? u"contact %1: "_s : u"entry %1: "_s).arg(fault.number);
    }
    return {};
}

} // namespace

QString inWords(const SavedListFault& fault, const QString& path, SavedKind kind)
{
    if (fault.kind == FileFault::WrongEnding)
        return u"%1 ends neither in %2"_s.arg(path, endingsInWords(operations::endingsFor(kind)));
    const QString ofFile = faultOfFile(fault, kind);
    return path + u": "_s + placeInWords(fault, kind) +
           (ofFile.isEmpty() ? faultOfEntry(fault, kind) : ofFile);
}

QString endingsInWords(const QStringList& endings)
{
    return endings.mid(0, endings.size() - 1).join(u", "_s) + u" nor in "_s + endings.last();
}

} // namespace kalmo::cli
