#include "phonedata/VcfCards.h"

#include "app/CodePage.h"
#include "app/TextReplace.h"
#include "phonedata/VcfCodec.h"
#include "phonedata/VcfText.h"

#include <QStringDecoder>

#include <algorithm>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

const QByteArray cardEnd = "END:VCARD\r\n";
const QByteArray softLineEnd = "=\r\n";
const QByteArray encodingMark = ";ENCODING=QUOTED-PRINTABLE";
const QByteArray charsetMark = ";CHARSET=UTF-8";
const QByteArray luidKey = "X-IRMC-LUID";

/// Takes a mark off a key. Returns it, or nothing.
QByteArray takeMark(QByteArray& key, const QByteArray& mark)
{
    const qsizetype at = key.indexOf(mark);
    if (at < 0)
        return {};
    key.remove(at, mark.size());
    return mark;
}

CardLine toCardLine(const QByteArray& text)
{
    const qsizetype colon = text.indexOf(':');
    if (colon < 0)
        return {.key = text, .hasColon = false};
    CardLine line{.key = text.first(colon)};
    const bool startsWithCharset = line.key.indexOf(charsetMark) < line.key.indexOf(encodingMark);
    const QByteArray encoding = takeMark(line.key, encodingMark);
    const QByteArray charset = takeMark(line.key, charsetMark);
    line.marks = startsWithCharset ? charset + encoding : encoding + charset;
    line.value = text.sliced(colon + 1);
    return line;
}

/// Returns true if a text goes on with the value of the line before it: folded, or within a base64 block,
/// which ends with an empty line or with the next key.
bool continues(const CardLine& before, const QByteArray& text)
{
    const bool isFolded = text.startsWith(' ') || text.startsWith('\t');
    const bool isInBlock = before.key.toUpper().contains("BASE64") && !before.value.endsWith("\r\n");
    return before.hasColon && (isFolded || (isInBlock && !text.contains(':')));
}

int hexValue(char digit)
{
    return QByteArrayView("0123456789ABCDEF")
        .indexOf(digit >= 'a' && digit <= 'f' ? digit - 'a' + 'A' : digit);
}

QByteArray fromQuotedPrintable(const QByteArray& text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    for (qsizetype at = 0; at < text.size(); ++at) {
        const int high = text[at] == '=' && at + 2 < text.size() ? hexValue(text[at + 1]) : -1;
        const int low = high < 0 ? -1 : hexValue(text[at + 2]);
        bytes.append(low < 0 ? text[at] : static_cast<char>(high * 16 + low));
        at += low < 0 ? 0 : 2;
    }
    return bytes;
}

/// Bytes of a value, decoded from quoted-printable.
QByteArray valueBytes(const CardLine& line)
{
    QByteArray bytes = line.value;
    bytes.replace(softLineEnd, QByteArray());
    return line.marks.contains(encodingMark) ? fromQuotedPrintable(bytes) : bytes;
}

bool isAscii(const QByteArray& bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
}

QString upToLineEnd(const QString& text)
{
    const auto end = std::find_if(text.begin(), text.end(),
                                  [](QChar c) { return c == u'\r' || c == u'\n' || c.isNull(); });
    return text.first(end - text.begin());
}

/// The fields that are texts, by the keys of their lines.
constexpr std::pair<QByteArrayView, QString tVcfEntry::*> textFields[] = {
    {"TEL;HOME", &tVcfEntry::home},
    {"TEL;WORK", &tVcfEntry::work},
    {"TEL;CELL", &tVcfEntry::mobile},
    {"EMAIL", &tVcfEntry::email},
};
constexpr QByteArrayView otherKnownKeys[] = {"N", "BDAY", "X-IRMC-LUID", "BEGIN", "VERSION", "END", ""};

bool isTextField(const QByteArray& key)
{
    return std::any_of(std::begin(textFields), std::end(textFields),
                       [&](const auto& field) { return field.first == key; });
}

/// Sets the field of a line, if there is one for it, from the line's text.
void setText(tVcfEntry& entry, const QByteArray& key, const QString& text)
{
    if (key == "N")
        std::tie(entry.lastName, entry.firstName) = splitName(text);
    for (const auto& [fieldKey, field] : textFields) {
        if (fieldKey == key)
            entry.*field = VcfUnesc(text);
    }
    if (key == "BDAY")
        entry.birthday = text;
    if (key == luidKey && !text.isEmpty()) {
        entry.luid = text;
        entry.isStandIn = false;
    }
}

/// Decodes anew what the described decoder has turned into other letters, and what it has taken for the rest
/// of a letter at the end of the line before. Of lines with the same key the first counts. `isEncoded`: the
/// object has lines in quoted-printable, so a "=" in any line begins a code.
void correctTexts(tVcfEntry& entry, const QByteArray& raw, bool isEncoded)
{
    QByteArrayList seen;
    for (const CardLine& line : cardLines(raw)) {
        const bool isMarked = line.marks.contains(encodingMark);
        const bool isSeen = seen.contains(line.key);
        const bool isAllEncoded = isEncoded && !isMarked && line.value.contains('=');
        seen.append(line.key);
        const bool isPlain = !isMarked && isAscii(line.value);
        const auto text = isPlain ? std::optional(lineText(line)) : utf8Text(line);
        if (text && !isSeen && !isAllEncoded)
            setText(entry, line.key, *text);
    }
}

tVcfEntry normalEntry(tVcfEntry entry)
{
    entry.birthday = normalBirthday(entry.birthday);
    entry.luid.clear();
    entry.isStandIn = false;
    return entry;
}

} // namespace

bool VcfCards::isWhole(int used) const
{
    return object.isEmpty() ? used == 0 : upperBound - 1 == used;
}

const ContactCard* VcfCards::find(const QString& luid) const
{
    const auto found = std::find_if(cards.begin(), cards.end(),
                                    [&](const ContactCard& card) { return card.entry.luid == luid; });
    return found == cards.end() ? nullptr : &*found;
}

VcfCards parseCards(const QByteArray& object)
{
    const QString bytesAsText = app::fromCp1252(object);
    bool endsBroken = false;
    const QStringList pieces =
        VcfStripCharset(app::replacedAll(bytesAsText, u"=\r\n"), &endsBroken).split(u"END:VCARD\r\n"_s);
    QByteArrayList rawPieces;
    qsizetype start = 0;
    for (qsizetype end = object.indexOf(cardEnd); end >= 0; end = object.indexOf(cardEnd, start)) {
        rawPieces.append(object.sliced(start, end + cardEnd.size() - start));
        start = end + cardEnd.size();
    }
    rawPieces.append(object.sliced(start));
    const bool isEncoded = object.contains(encodingMark);
    VcfCards all{
        .upperBound = static_cast<int>(pieces.size()) - 1, .endsBroken = endsBroken, .object = object};
    for (qsizetype index = 0; index < pieces.size(); ++index) {
        if (!pieces[index].contains(u"X-IRMC-LUID"))
            continue;
        ContactCard card{.entry = VcfParseItem(pieces[index], static_cast<int>(all.cards.size()) + 1)};
        // A code for a line end may stand in the text. Then the pieces of the text are not those of the
        // bytes.
        if (rawPieces.size() == pieces.size()) {
            const QByteArray& piece = rawPieces[index];
            card.raw = piece.sliced(std::max<qsizetype>(piece.indexOf("BEGIN:VCARD"), 0));
            correctTexts(card.entry, card.raw, isEncoded);
        }
        all.cards.push_back(std::move(card));
    }
    return all;
}

void markOwnCard(VcfCards& cards, std::optional<int> used)
{
    const auto withLuid = std::ssize(cards.cards);
    if (withLuid > 0 && withLuid == (used ? *used + 1 : cards.upperBound))
        cards.cards.front().entry.isStandIn = true;
}

std::vector<CardLine> cardLines(const QByteArray& raw)
{
    std::vector<CardLine> lines;
    for (qsizetype start = 0; start < raw.size();) {
        qsizetype end = raw.indexOf("\r\n", start);
        while (end > start && raw[end - 1] == '=')
            end = raw.indexOf("\r\n", end + 2);
        const QByteArray text = raw.sliced(start, (end < 0 ? raw.size() : end) - start);
        if (!lines.empty() && continues(lines.back(), text))
            lines.back().value += "\r\n" + text;
        else
            lines.push_back(toCardLine(text));
        start = end < 0 ? raw.size() : end + 2;
    }
    return lines;
}

std::optional<QString> utf8Text(const CardLine& line)
{
    const bool isMarked = line.marks.contains(encodingMark);
    const QByteArray bytes = valueBytes(line);
    if (!isMarked && isAscii(bytes))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(upToLineEnd(text));
}

QString lineText(const CardLine& line)
{
    const auto text = utf8Text(line);
    return text ? *text : upToLineEnd(app::fromCp1252(valueBytes(line)));
}

tVcfEntry writtenEntry(const ContactCard& card)
{
    tVcfEntry entry = card.entry;
    QByteArrayList seen;
    for (const CardLine& line : cardLines(card.raw)) {
        const bool isDecodable = !line.marks.contains(encodingMark) || utf8Text(line);
        if (isDecodable && !seen.contains(line.key))
            setText(entry, line.key, lineText(line));
        seen.append(line.key);
    }
    entry.isStandIn = card.entry.isStandIn;
    return entry;
}

std::vector<CardLine> otherLines(const QByteArray& raw)
{
    std::vector<CardLine> lines = cardLines(raw);
    std::erase_if(lines, [](const CardLine& line) {
        return isTextField(line.key) || std::find(std::begin(otherKnownKeys), std::end(otherKnownKeys),
                                                  line.key) != std::end(otherKnownKeys);
    });
    return lines;
}

QByteArray withLuid(const QByteArray& raw, const QString& luid)
{
    const QByteArray start = "\r\n" + luidKey + ':';
    const qsizetype at = raw.indexOf(start);
    if (at < 0)
        return raw;
    const qsizetype value = at + start.size();
    const qsizetype end = raw.indexOf("\r\n", value);
    return raw.first(value) + app::toCp1252(luid) + raw.sliced(end < 0 ? raw.size() : end);
}

QString normalBirthday(QString birthday)
{
    if (birthday.startsWith(u"0000-00-00"))
        return {};
    const bool hasShortDay = birthday.size() == 9 || birthday.indexOf(u'T') == 9;
    if (hasShortDay)
        birthday.insert(8, u'0');
    const QString midnight = u"T00:00"_s;
    return birthday.endsWith(midnight) ? birthday.chopped(midnight.size()) : birthday;
}

bool haveSameContent(const tVcfEntry& left, const tVcfEntry& right)
{
    return normalEntry(left) == normalEntry(right);
}

} // namespace kalmo::phonedata
