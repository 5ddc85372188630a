#include "handset/irmc/ContactCard.h"

#include "app/CodePage.h"

#include <QDate>
#include <QRegularExpression>
#include <QTime>

#include <algorithm>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

struct FieldRow
{
    QString field;
    QByteArray line; // spelling of its line by the handset
    QByteArray key;  // how a line from outside begins, and a parameter that it has
    QByteArray parameter;
    qsizetype longest;
};

const std::vector<FieldRow>& fieldTable()
{
    static const std::vector<FieldRow> rows = {
        {u"home"_s, "TEL;HOME", "TEL", "HOME", 32}, {u"mobile"_s, "TEL;CELL", "TEL", "CELL", 32},
        {u"work"_s, "TEL;WORK", "TEL", "WORK", 32}, {u"email"_s, "EMAIL", "EMAIL", {}, 60},
        {u"birthday"_s, "BDAY", "BDAY", {}, 20},
    };
    return rows;
}

constexpr qsizetype longestName = 16;
constexpr qsizetype longestLine = 76; // of folded text

/// One line of a card, parsed.
struct CardLine
{
    QByteArray key;
    QByteArrayList parameters;
    QByteArray value;

    bool has(const QByteArray& parameter) const
    {
        return std::any_of(parameters.begin(), parameters.end(), [&](const QByteArray& one) {
            return one == parameter || one.endsWith('=' + parameter);
        });
    }
};

QByteArray fromQuotedPrintable(const QByteArray& text)
{
    QByteArray out;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QByteArray digits = text.mid(at + 1, 2);
        bool ok = false;
        const uint value = digits.toUInt(&ok, 16);
        const bool coded = text[at] == '=' && ok && digits.size() == 2;
        out += coded ? static_cast<char>(value) : text[at];
        at += coded ? 2 : 0;
    }
    return out;
}

QByteArray toQuotedPrintable(const QByteArray& text)
{
    QByteArray out;
    for (const char character : text) {
        const auto value = static_cast<uchar>(character);
        if (value >= 0x80 || character == '=')
            out += '=' + QByteArray(1, character).toHex().toUpper();
        else
            out += character;
    }
    return out;
}

CardLine parseLine(const QByteArray& line)
{
    const qsizetype colon = line.indexOf(':');
    QByteArrayList head = line.left(colon).toUpper().split(';');
    return {head.takeFirst(), head, colon < 0 ? QByteArray() : line.sliced(colon + 1)};
}

QString lineText(const CardLine& line)
{
    const QByteArray bytes = line.has("QUOTED-PRINTABLE") ? fromQuotedPrintable(line.value) : line.value;
    return line.has("UTF-8") ? QString::fromUtf8(bytes) : app::fromCp1252(bytes);
}

/// Splits at ";", but not at "\;".
QStringList splitValue(const QString& value)
{
    QStringList parts{{}};
    for (qsizetype at = 0; at < value.size(); ++at) {
        if (value[at] == u'\\' && at + 1 < value.size() && value[at + 1] == u';')
            parts.last() += value[++at];
        else if (value[at] == u';')
            parts.append(QString());
        else
            parts.last() += value[at];
    }
    return parts;
}

QString escaped(QString text)
{
    return text.replace(u';', u"\\;"_s);
}

/// A birthday in full digits, empty for one of zeros. Gives nothing if it is none.
std::optional<QString> birthday(const QString& text)
{
    if (text.startsWith(u"0000-00-00"))
        return QString();
    static const QRegularExpression form(
        u"^(\\d{4})-?(\\d\\d)-?(\\d{1,2})(?:T(\\d\\d):?(\\d\\d)(?::?\\d\\d)?)?$"_s);
    const auto match = form.match(text);
    const auto number = [&](int group) { return match.captured(group).toInt(); };
    const QDate date(number(1), number(2), number(3));
    const QTime time(number(4), number(5));
    if (!match.hasMatch() || !date.isValid() || !time.isValid())
        return std::nullopt;
    return date.toString(u"yyyy-MM-dd"_s) + time.toString(u"'T'hh:mm"_s);
}

bool takeLine(const CardLine& line, Contact& contact)
{
    const QString text = lineText(line);
    if (line.key == "N") {
        const QStringList names = splitValue(text);
        contact[u"lastName"_s] = names[0];
        contact[u"firstName"_s] = names.value(1);
        return true;
    }
    for (const FieldRow& row : fieldTable()) {
        if (line.key != row.key || (!row.parameter.isEmpty() && !line.has(row.parameter)))
            continue;
        contact[row.field] = splitValue(text).join(u';');
        if (row.key != "BDAY" || text.isEmpty())
            return true;
        const auto day = birthday(text);
        contact[row.field] = day.value_or(QString());
        return day.has_value();
    }
    return true;
}

/// With soft line ends, so that no line is longer than 76.
QByteArray folded(const QByteArray& head, const QByteArray& quoted)
{
    QByteArray out = head;
    qsizetype column = head.size();
    for (qsizetype at = 0; at < quoted.size();) {
        const qsizetype size = quoted[at] == '=' ? 3 : 1;
        if (column + size >= longestLine) {
            out += "=\r\n";
            column = 0;
        }
        out += quoted.mid(at, size);
        column += size;
        at += size;
    }
    return out;
}

QByteArray textLine(const QByteArray& key, const QString& text, CardText form)
{
    const bool ascii =
        std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() < 128; });
    if (ascii || (form == CardText::Raw && app::fitsCp1252(text)))
        return key + ':' + app::toCp1252(text) + "\r\n";
    if (form == CardText::Utf8)
        return key + ";CHARSET=UTF-8:" + text.toUtf8() + "\r\n";
    const QByteArray head = key + ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:";
    const QByteArray quoted = toQuotedPrintable(text.toUtf8());
    return (form == CardText::Folded ? folded(head, quoted) : head + quoted) + "\r\n";
}

} // namespace

QByteArray cardText(const Contact& contact, const QString& luid, CardText text)
{
    const auto field = [&](const QString& name) { return escaped(contact[name].toString()); };
    QByteArray card = "BEGIN:VCARD\r\nVERSION:2.1\r\n";
    card += textLine("N", field(u"lastName"_s) + u';' + field(u"firstName"_s), text);
    for (const FieldRow& row : fieldTable()) {
        if (!field(row.field).isEmpty())
            card += textLine(row.line, field(row.field), text);
    }
    if (!luid.isEmpty())
        card += "X-IRMC-LUID:" + luid.toLatin1() + "\r\n";
    return card + "END:VCARD\r\n";
}

std::optional<Contact> parseCard(const QByteArray& text)
{
    QByteArray unfolded = text;
    unfolded.replace("=\r\n", "").replace('\r', '\n');
    Contact contact;
    bool began = false;
    for (const QByteArray& row : unfolded.split('\n')) {
        const CardLine line = parseLine(row);
        began = began || (line.key == "BEGIN" && line.value.toUpper() == "VCARD");
        if (began && line.key == "END")
            break;
        if (began && !takeLine(line, contact))
            return std::nullopt;
    }
    for (const QString& key : contact.keys()) {
        if (contact[key].toString().isEmpty())
            contact.remove(key);
    }
    return began ? std::optional(contact) : std::nullopt;
}

bool fits(const Contact& contact)
{
    const auto length = [&](const QString& field) { return contact[field].toString().size(); };
    return length(u"lastName"_s) <= longestName && length(u"firstName"_s) <= longestName &&
           std::all_of(fieldTable().begin(), fieldTable().end(),
                       [&](const FieldRow& row) { return length(row.field) <= row.longest; });
}

} // namespace kalmo::handset
