#include "transfer/import/VcardLines.h"

#include "app/CodePage.h"

#include <QStringDecoder>

#include <algorithm>

namespace kalmo::transfer {

namespace {

QByteArrayView takeByteLine(QByteArrayView& rest)
{
    const auto end =
        std::find_if(rest.begin(), rest.end(), [](char byte) { return byte == '\n' || byte == '\r'; });
    const QByteArrayView line = rest.first(end - rest.begin());
    rest = rest.sliced(line.size());
    if (rest.startsWith("\r\n"))
        rest = rest.sliced(2);
    else if (!rest.isEmpty())
        rest = rest.sliced(1);
    return line;
}

/// Place of a character outside of double quotes, -1 if there is none.
qsizetype placeOutsideQuotes(QByteArrayView text, char wanted)
{
    bool quoted = false;
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place] == '"')
            quoted = !quoted;
        else if (text[place] == wanted && !quoted)
            return place;
    }
    return -1;
}

void takeParameter(QByteArrayView parameter, VcardLine& line)
{
    const qsizetype equals = parameter.indexOf('=');
    const QByteArray key = parameter.first(std::max<qsizetype>(equals, 0)).toByteArray().toUpper();
    QByteArray value = parameter.sliced(equals + 1).toByteArray().toUpper();
    value.replace('"', "");
    if (key == "CHARSET") {
        line.charset = value;
    } else if (key == "ENCODING" || key.isEmpty() || key == "TYPE") {
        line.isQuotedPrintable = line.isQuotedPrintable || value == "QUOTED-PRINTABLE";
        line.isBase64 = line.isBase64 || value == "B" || value == "BASE64";
        line.types += value.split(',');
    } else if (key == "PREF" && value == "1") {
        line.types.append("PREF");
    }
}

/// Name and parameters of a line, up to its colon.
void takeHead(QByteArrayView head, VcardLine& line)
{
    bool isName = true;
    while (!head.isEmpty()) {
        const qsizetype end = placeOutsideQuotes(head, ';');
        const QByteArrayView part = end < 0 ? head : head.first(end);
        head = end < 0 ? QByteArrayView() : head.sliced(end + 1);
        if (isName)
            line.name = part.sliced(part.lastIndexOf('.') + 1).toByteArray().trimmed().toUpper();
        else
            takeParameter(part, line);
        isName = false;
    }
}

int hexValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

QByteArray quotedPrintable(const QByteArray& value)
{
    QByteArray bytes;
    bytes.reserve(value.size());
    for (qsizetype place = 0; place < value.size(); ++place) {
        const int high = value[place] == '=' && place + 2 < value.size() ? hexValue(value[place + 1]) : -1;
        const int low = high < 0 ? -1 : hexValue(value[place + 2]);
        if (low < 0) {
            bytes.append(value[place]);
            continue;
        }
        bytes.append(static_cast<char>(high * 16 + low));
        place += 2;
    }
    return bytes;
}

/// Looks at a line up to its first colon.
bool hasQuotedPrintableHead(const QByteArray& line)
{
    return line.first(line.indexOf(':')).toUpper().contains("QUOTED-PRINTABLE");
}

/// The text in a character set, nothing if the name is unknown or the bytes are not valid by it.
std::optional<QString> decodedBy(const QByteArray& charset, QByteArrayView bytes)
{
    QStringDecoder decoder(charset.constData(), QStringDecoder::Flag::Stateless);
    if (charset.isEmpty() || !decoder.isValid())
        return std::nullopt;
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text.normalized(QString::NormalizationForm_C));
}

} // namespace

QString VcardLine::text() const
{
    const QByteArray bytes = isQuotedPrintable ? quotedPrintable(value) : value;
    const bool isLatin = charset == "ISO-8859-1" || charset == "WINDOWS-1252";
    if (const auto text = isLatin ? std::nullopt : decodedBy(charset, bytes))
        return *text;
    if (isLatin || !bytes.isValidUtf8())
        return app::fromCp1252(bytes);
    return QString::fromUtf8(bytes).normalized(QString::NormalizationForm_C);
}

/// A line together with those that begin with a blank. After a soft break the blank belongs to the text.
QByteArray VcardLines::unfolded()
{
    QByteArray line = takeByteLine(m_rest).toByteArray();
    bool hasHead = line.contains(':');
    bool isQuoted = hasHead && hasQuotedPrintableHead(line);
    while ((m_rest.startsWith(' ') || m_rest.startsWith('\t')) && !(isQuoted && line.endsWith('='))) {
        const QByteArrayView more = takeByteLine(m_rest).sliced(1);
        line += more;
        if (!hasHead && more.contains(':')) { // looked at once: a line may have 100000 parts
            hasHead = true;
            isQuoted = hasQuotedPrintableHead(line);
        }
    }
    return line;
}

/// In quoted-printable text a "=" at the end goes on in the next line, whatever that begins with.
void VcardLines::joinSoftBreaks(QByteArray& value)
{
    while (value.endsWith('=') && !m_rest.isEmpty()) {
        value.chop(1);
        value += takeByteLine(m_rest);
    }
}

std::optional<VcardLine> VcardLines::next()
{
    while (!m_rest.isEmpty()) {
        const QByteArray whole = unfolded();
        const qsizetype colon = placeOutsideQuotes(whole, ':');
        if (colon < 0)
            continue;
        VcardLine line;
        takeHead(QByteArrayView(whole).first(colon), line);
        line.value = whole.sliced(colon + 1);
        if (line.isQuotedPrintable)
            joinSoftBreaks(line.value);
        return line;
    }
    return std::nullopt;
}

QStringList vcardParts(const QString& value, QChar mark)
{
    QStringList parts{QString()};
    for (qsizetype place = 0; place < value.size(); ++place) {
        const QChar character = value[place];
        if (character == u'\\' && place + 1 < value.size()) {
            const QChar escaped = value[++place];
            parts.last() += escaped == u'n' || escaped == u'N' ? QChar(u' ') : escaped;
        } else if (character == mark) {
            parts.append(QString());
        } else {
            parts.last() += character == u'\n' || character == u'\r' ? QChar(u' ') : character;
        }
    }
    return parts;
}

QString vcardText(const QString& value)
{
    return vcardParts(value, QChar()).join(QChar());
}

} // namespace kalmo::transfer
