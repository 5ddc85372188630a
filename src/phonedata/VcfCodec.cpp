#include "phonedata/VcfCodec.h"

#include "app/CodePage.h"
#include "app/TextReplace.h"
#include "phonedata/VcfText.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

const QString lineEnd = u"\r\n"_s;
const QChar hiddenSemicolon = u'•'; // code 149

struct NameParts
{
    QString last;
    QString first;
};

/// Parts a name at the first ";" that is not escaped. All further ones stay in the first name.
NameParts splitName(const QString& text)
{
    const QString value = app::replacedAll(text, u"\\;", QStringView(&hiddenSemicolon, 1));
    const qsizetype semicolon = value.indexOf(u';');
    const auto shown = [](QString part) { return part.replace(hiddenSemicolon, u';'); };
    if (semicolon < 0)
        return {shown(value), {}};
    return {shown(value.first(semicolon)), shown(value.sliced(semicolon + 1))};
}

/// A value for one line of a card: it must not add lines of its own.
QString lineValue(QString value)
{
    for (const QChar end : {u'\r', u'\n', u'\0'})
        value.replace(end, u' ');
    return VcfEsc(value);
}

QString nameLine(const tVcfEntry& entry, bool encode)
{
    const QString last = encode ? VcfQpEnc(entry.lastName) : entry.lastName;
    const QString first = encode ? VcfQpEnc(entry.firstName) : entry.firstName;
    const bool encoded = last != entry.lastName || first != entry.firstName;
    return (encoded ? u"N;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:"_s : u"N:"_s) + lineValue(last) + u';' +
           lineValue(first) + lineEnd;
}

QString lineUnlessEmpty(const QString& key, const QString& value)
{
    return value.isEmpty() ? QString() : key + lineValue(value) + lineEnd;
}

} // namespace

QString GetVcfValue(QStringView card, QStringView key)
{
    const QString start = lineEnd + key.toString();
    const qsizetype found = card.indexOf(start);
    if (found < 0)
        return {};
    const QStringView rest = card.sliced(found + start.size());
    qsizetype end = 0;
    while (end < rest.size() && rest[end] != u'\r' && rest[end] != u'\n' && rest[end] != u'\0')
        ++end;
    return rest.first(end).toString();
}

QByteArray VcfBuildItem(const tVcfEntry& entry, bool encodeNames)
{
    const QString card =
        u"BEGIN:VCARD"_s + lineEnd + nameLine(entry, encodeNames) +
        lineUnlessEmpty(u"EMAIL;INTERNET:"_s, entry.email) + lineUnlessEmpty(u"TEL;HOME:"_s, entry.home) +
        lineUnlessEmpty(u"TEL;WORK:"_s, entry.work) + lineUnlessEmpty(u"TEL;CELL:"_s, entry.mobile) +
        u"X-IRMC-LUID:"_s + lineValue(entry.luid) + lineEnd + u"BDAY:"_s + lineValue(entry.birthday) +
        lineEnd + u"END:VCARD"_s + lineEnd + lineEnd;
    return app::toCp1252(card);
}

QString endangeredCharacters(const tVcfEntry& entry)
{
    constexpr int firstSign = 0x80;
    constexpr int lastSign = 0xBF;
    constexpr int lead = 0xC3;
    QString found;
    const auto note = [&found](char32_t character) {
        const auto letter = QChar::fromUcs4(character);
        if (!found.contains(letter))
            found += letter;
    };
    const QString names = entry.lastName + entry.firstName;
    for (const char32_t character : QString(names + entry.email).toUcs4()) {
        const int value = app::cp1252Value(character);
        if (character == U'=' || value < 0 || value == lead)
            note(character);
    }
    for (const char32_t character : names.toUcs4()) {
        const int value = app::cp1252Value(character);
        if (value >= firstSign && value <= lastSign)
            note(character);
    }
    if (entry.lastName.endsWith(u'\\'))
        note(U'\\');
    return found;
}

tVcfEntry VcfParseItem(const QString& card, int index)
{
    const QString lines = app::replacedAll(card, u"=\r\n");
    const NameParts name = splitName(GetVcfValue(lines, u"N:"));
    tVcfEntry entry{.email = VcfUnesc(GetVcfValue(lines, u"EMAIL:")),
                    .lastName = name.last,
                    .work = VcfUnesc(GetVcfValue(lines, u"TEL;WORK:")),
                    .mobile = VcfUnesc(GetVcfValue(lines, u"TEL;CELL:")),
                    .home = VcfUnesc(GetVcfValue(lines, u"TEL;HOME:")),
                    .firstName = name.first,
                    .birthday = GetVcfValue(lines, u"BDAY:"),
                    .luid = GetVcfValue(lines, u"X-IRMC-LUID:")};
    entry.isStandIn = entry.luid.isEmpty();
    if (entry.isStandIn)
        entry.luid = u"%1"_s.arg(index, 3, 10, QChar(u'0'));
    return entry;
}

VcfCards parseCards(const QString& text)
{
    VcfCards cards;
    const QStringList pieces = text.split(u"END:VCARD\r\n"_s);
    cards.upperBound = static_cast<int>(pieces.size()) - 1;
    for (const QString& piece : pieces) {
        if (piece.contains(u"X-IRMC-LUID"))
            cards.entries.append(VcfParseItem(piece, static_cast<int>(cards.entries.size()) + 1));
    }
    return cards;
}

} // namespace kalmo::phonedata
