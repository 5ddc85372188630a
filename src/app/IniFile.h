#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace kalmo::app {

/// An ini file in memory: sections, keys and values as the Windows profile functions see them. Names are
/// compared without regard to case, and the first of several equal ones counts. Blanks around a value and one
/// pair of quotes around it are dropped. Comments, lines that are not understood and the order of all lines
/// are kept.
class IniFile
{
public:
    /// Bytes of a file: UTF-8 with or without its mark, anything else is taken for Windows-1252.
    static IniFile parse(const QByteArray& bytes);
    QByteArray toBytes() const; ///< UTF-8, lines end in CR LF

    std::optional<QString> value(const QString& section, const QString& key) const;
    /// Line ends within the value become blanks: a value can never add lines of its own.
    void setValue(const QString& section, const QString& key, const QString& value);
    QStringList keys(const QString& section) const;

private:
    struct Line
    {
        QString raw;
        QString section; // section of the line, or the one that it opens
        QString key;     // empty unless the line is "key=value"
        QString value;
    };

    const Line* find(const QString& section, const QString& key) const;

    std::vector<Line> m_lines;
};

} // namespace kalmo::app
