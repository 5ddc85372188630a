#include "phonedata/VcfCodec.h"

#include "app/CodePage.h"
#include "app/TextReplace.h"
#include "phonedata/VcfText.h"

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

const QString lineEnd = u"\r\n"_s;
const QChar hiddenSemicolon = u'•'; // code 149

/// A value for one line of a card: it must not add lines of its own.
QString lineValue(QString value)
{
    for (const QChar end : {u'\r', u'\n', u'\0'})
        value.replace(end, u' ');
    return VcfEsc(value);
}

/// A value as UTF-8 in quoted-printable, for letters that Windows-1252 lacks. ";" stays: it separates the
/// parts of a name.
QByteArray utf8Value(const QString& value)
{
    const QByteArray bytes = lineValue(value).toUtf8();
    QByteArray out;
    for (const char byte : bytes) {
        const bool isPlain = byte >= ' ' && byte <= '~' && byte != '=';
        out += isPlain ? QByteArray(1, byte) : '=' + QByteArray(1, byte).toHex().toUpper();
    }
    return out;
}

constexpr char quotedUtf8Marks[] = ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8";

CardLine nameLine(const tVcfEntry& entry, bool encode)
{
    if (!app::fitsCp1252(entry.lastName) || !app::fitsCp1252(entry.firstName))
        return {"N", quotedUtf8Marks, utf8Value(entry.lastName) + ';' + utf8Value(entry.firstName)};
    const QString last = encode ? VcfQpEnc(entry.lastName) : entry.lastName;
    const QString first = encode ? VcfQpEnc(entry.firstName) : entry.firstName;
    const bool isEncoded = last != entry.lastName || first != entry.firstName;
    return {"N", isEncoded ? quotedUtf8Marks : "", app::toCp1252(lineValue(last) + u';' + lineValue(first))};
}

CardLine emailLine(const QString& email)
{
    if (!app::fitsCp1252(email))
        return {"EMAIL;INTERNET", quotedUtf8Marks, utf8Value(email)};
    return {"EMAIL;INTERNET", {}, app::toCp1252(lineValue(email))};
}

CardLine plainLine(const QByteArray& key, const QString& value)
{
    return {key, {}, app::toCp1252(lineValue(value))};
}

/// A field's line in the order of a card.
struct BuiltLine
{
    CardLine line;         ///< with the key that is written
    QByteArray keyInPhone; ///< the key that the phone gives it
    bool isChanged = true; ///< compared with the card in the phone
    bool isAlways = false; ///< written even if it is empty
};

std::vector<BuiltLine> builtLines(const tVcfEntry& entry, bool encodeNames, const tVcfEntry& before)
{
    const bool sameName = entry.lastName == before.lastName && entry.firstName == before.firstName;
    const bool sameBirthday = haveSameContent({.birthday = entry.birthday}, {.birthday = before.birthday});
    return {
        {nameLine(entry, encodeNames), "N", !sameName, true},
        {emailLine(entry.email), "EMAIL", entry.email != before.email},
        {plainLine("TEL;HOME", entry.home), "TEL;HOME", entry.home != before.home},
        {plainLine("TEL;WORK", entry.work), "TEL;WORK", entry.work != before.work},
        {plainLine("TEL;CELL", entry.mobile), "TEL;CELL", entry.mobile != before.mobile},
        {plainLine("X-IRMC-LUID", entry.luid), "X-IRMC-LUID", true, true},
        {plainLine("BDAY", entry.birthday), "BDAY", !sameBirthday, true},
    };
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

std::pair<QString, QString> splitName(const QString& value)
{
    const QString text = app::replacedAll(value, u"\\;", QStringView(&hiddenSemicolon, 1));
    const qsizetype semicolon = text.indexOf(u';');
    const auto shown = [](QString part) { return part.replace(hiddenSemicolon, u';'); };
    if (semicolon < 0)
        return {shown(text), {}};
    return {shown(text.first(semicolon)), shown(text.sliced(semicolon + 1))};
}

QByteArray VcfBuildItem(const tVcfEntry& entry, bool encodeNames, const ContactCard* before)
{
    const bool isInPhone = before && !before->raw.isEmpty();
    const std::vector<CardLine> held = isInPhone ? cardLines(before->raw) : std::vector<CardLine>();
    QByteArray card = "BEGIN:VCARD\r\n";
    for (BuiltLine& built : builtLines(entry, encodeNames, isInPhone ? before->entry : tVcfEntry{})) {
        const auto kept = std::find_if(held.begin(), held.end(),
                                       [&](const CardLine& line) { return line.key == built.keyInPhone; });
        if (!built.isChanged && kept != held.end()) {
            built.line.marks = kept->marks;
            built.line.value = kept->value;
        }
        if (built.isAlways || !built.line.value.isEmpty())
            card += built.line.bytes();
    }
    for (const CardLine& line : isInPhone ? otherLines(before->raw) : std::vector<CardLine>())
        card += line.bytes();
    return card + "END:VCARD\r\n\r\n";
}

QString endangeredCharacters(const tVcfEntry& entry)
{
    constexpr int firstSign = 0x80;
    constexpr int lastSign = 0xBF;
    constexpr int lead = 0xC3;
    QString found;
    const auto noteAll = [&found](const QString& text, const auto& isEndangered) {
        for (const char32_t character : text.toUcs4()) {
            const auto letter = QChar::fromUcs4(character);
            if (isEndangered(character, app::cp1252Value(character)) && !found.contains(letter))
                found += letter;
        }
    };
    const auto isMisread = [](char32_t character, int value) { return character == U'=' || value == lead; };
    const QString names = entry.lastName + entry.firstName;
    const bool namesAreUtf8 = !app::fitsCp1252(names);
    if (!namesAreUtf8)
        noteAll(names, isMisread);
    if (app::fitsCp1252(entry.email))
        noteAll(entry.email, isMisread);
    if (!namesAreUtf8)
        noteAll(names, [](char32_t, int value) { return value >= firstSign && value <= lastSign; });
    noteAll(entry.home + entry.mobile + entry.work, [](char32_t, int value) { return value < 0; });
    if (entry.lastName.endsWith(u'\\'))
        found += u'\\';
    return found;
}

tVcfEntry VcfParseItem(const QString& card, int index)
{
    const QString lines = app::replacedAll(card, u"=\r\n");
    const auto [lastName, firstName] = splitName(GetVcfValue(lines, u"N:"));
    tVcfEntry entry{.email = VcfUnesc(GetVcfValue(lines, u"EMAIL:")),
                    .lastName = lastName,
                    .work = VcfUnesc(GetVcfValue(lines, u"TEL;WORK:")),
                    .mobile = VcfUnesc(GetVcfValue(lines, u"TEL;CELL:")),
                    .home = VcfUnesc(GetVcfValue(lines, u"TEL;HOME:")),
                    .firstName = firstName,
                    .birthday = GetVcfValue(lines, u"BDAY:"),
                    .luid = GetVcfValue(lines, u"X-IRMC-LUID:")};
    entry.isStandIn = entry.luid.isEmpty();
    if (entry.isStandIn)
        entry.luid = u"%1"_s.arg(index, 3, 10, QChar(u'0'));
    return entry;
}

} // namespace kalmo::phonedata
