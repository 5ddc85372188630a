#include "app/IniFile.h"

#include "app/CodePage.h"

#include <QStringDecoder>

#include <algorithm>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

QString decode(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(bytes);
    return utf8.hasError() ? fromCp1252(bytes) : text;
}

QString unquoted(QStringView value)
{
    value = value.trimmed();
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == u'"' || value.front() == u'\'');
    return (quoted ? value.sliced(1, value.size() - 2) : value).toString();
}

bool same(const QString& left, const QString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

QString onOneLine(QString value)
{
    for (QChar& character : value) {
        if (character == u'\r' || character == u'\n' || character == u'\0')
            character = u' ';
    }
    return value;
}

} // namespace

IniFile IniFile::parse(const QByteArray& bytes)
{
    IniFile file;
    QString section;
    QString text = decode(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    if (text.endsWith(u'\n'))
        text.chop(1);
    if (text.isEmpty())
        return file;
    for (const QString& raw : text.split(u'\n')) {
        Line line{raw, section, {}, {}};
        const QString trimmed = raw.trimmed();
        const qsizetype equals = trimmed.indexOf(u'=');
        if (trimmed.startsWith(u'[')) {
            section = trimmed.sliced(1, std::max<qsizetype>(trimmed.indexOf(u']'), 1) - 1).trimmed();
            line.section = section;
        } else if (!trimmed.startsWith(u';') && equals > 0) {
            line.key = trimmed.first(equals).trimmed();
            line.value = unquoted(QStringView(trimmed).sliced(equals + 1));
        }
        file.m_lines.push_back(std::move(line));
    }
    return file;
}

QByteArray IniFile::toBytes() const
{
    QString text;
    for (const Line& line : m_lines)
        text += line.raw + u"\r\n"_s;
    return text.toUtf8();
}

const IniFile::Line* IniFile::find(const QString& section, const QString& key) const
{
    const auto found = std::find_if(m_lines.begin(), m_lines.end(), [&](const Line& line) {
        return !line.key.isEmpty() && same(line.section, section) && same(line.key, key);
    });
    return found == m_lines.end() ? nullptr : &*found;
}

std::optional<QString> IniFile::value(const QString& section, const QString& key) const
{
    const Line* line = find(section, key);
    return line ? std::optional(line->value) : std::nullopt;
}

void IniFile::setValue(const QString& section, const QString& key, const QString& value)
{
    const QString clean = onOneLine(value);
    const Line made{onOneLine(key) + u'=' + clean, section, key.trimmed(), unquoted(clean)};

    if (const Line* line = find(section, key)) {
        m_lines[line - m_lines.data()] = made;
        return;
    }
    auto place = std::find_if(m_lines.rbegin(), m_lines.rend(), [&](const Line& line) {
                     return same(line.section, section);
                 }).base();
    if (place == m_lines.begin()) {
        m_lines.push_back({u'[' + section + u']', section, {}, {}});
        place = m_lines.end();
    }
    m_lines.insert(place, made);
}

QStringList IniFile::keys(const QString& section) const
{
    QStringList names;
    for (const Line& line : m_lines) {
        if (!line.key.isEmpty() && same(line.section, section))
            names.append(line.key);
    }
    return names;
}

} // namespace kalmo::app
