#include "transfer/export/ExportTable.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::transfer {

int ExportTable::lineCount() const
{
    return static_cast<int>(rows.size()) + (hasHeader() ? 1 : 0) + (hasEmptyLine ? 1 : 0);
}

qsizetype ExportTable::widestText(int column) const
{
    qsizetype widest = headings.value(column).size();
    for (const QStringList& row : rows)
        widest = std::max(widest, row[column].size());
    return widest;
}

qsizetype ExportTable::lettersBeyondCodePage() const
{
    qsizetype count = 0;
    for (const QStringList& row : rows) {
        for (const QString& cell : row)
            count += app::toCp1252(cell).count('?') - cell.count(u'?');
    }
    return count;
}

ExportTable makeExportTable(const toolkit::ListRows& list, const ExportChoice& choice,
                            const toolkit::Progress& progress)
{
    ExportTable table;
    table.columnCount = static_cast<int>(choice.columns.size());
    table.hasEmptyLine = choice.useHeader && choice.addEmptyLine;
    if (choice.useHeader) {
        for (const int column : choice.columns)
            table.headings.append(trimBlanks(list.columns()[column].title));
    }
    for (int index = 0; index < list.count(); ++index) {
        progress.step();
        const toolkit::ListRow& row = list.row(index);
        if (choice.onlySelected && !row.selected)
            continue;
        QStringList cells;
        cells.reserve(choice.columns.size());
        for (const int column : choice.columns)
            cells.append(trimBlanks(row.text(column)));
        table.rows.push_back(std::move(cells));
    }
    return table;
}

QString trimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text.toString();
}

} // namespace kalmo::transfer
