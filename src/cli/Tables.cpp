#include "cli/Tables.h"

#include <algorithm>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

namespace {

QString withoutTrailingBlanks(QString line)
{
    while (line.endsWith(u' '))
        line.chop(1);
    return line;
}

QString alignedLine(const QStringList& cells, const std::vector<qsizetype>& widths)
{
    QString line;
    for (qsizetype column = 0; column < cells.size(); ++column)
        line += cells[column].leftJustified(widths[column] + 2);
    return withoutTrailingBlanks(line) + u'\n';
}

} // namespace

QString printable(QString text)
{
    for (QChar& character : text) {
        const QChar::Category category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            character = u'?';
    }
    return text;
}

QString printableLines(const QString& text)
{
    QStringList lines = text.split(u'\n');
    for (QString& line : lines)
        line = printable(line);
    return lines.join(u'\n');
}

QString alignedTable(const QStringList& headings, const std::vector<QStringList>& rows)
{
    std::vector<QStringList> lines{headings};
    for (const QStringList& row : rows) {
        QStringList cells;
        for (const QString& cell : row)
            cells.append(printable(cell));
        lines.push_back(cells);
    }
    std::vector<qsizetype> widths(headings.size(), 0);
    for (const QStringList& cells : lines) {
        for (qsizetype column = 0; column < cells.size(); ++column)
            widths[column] = std::max(widths[column], cells[column].size());
    }
    QString text;
    for (const QStringList& cells : lines)
        text += alignedLine(cells, widths);
    return text;
}

QString alignedFields(const std::vector<std::pair<QString, QString>>& fields)
{
    qsizetype width = 0;
    for (const auto& field : fields)
        width = std::max(width, field.first.size());
    QString text;
    for (const auto& [name, value] : fields)
        text +=
            (name + u':').leftJustified(width + 3) + (value.isEmpty() ? u"-"_s : printable(value)) + u'\n';
    return text;
}

} // namespace kalmo::cli
