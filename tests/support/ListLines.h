#pragma once

#include "toolkit/ListRows.h"

namespace kalmo::tests {

/// The texts of a row as "Meier|030": all of its columns, or these.
inline QString lineOf(const toolkit::ListRow& row, const QList<int>& columns = {})
{
    QStringList texts;
    for (int column = 0; columns.isEmpty() && column < static_cast<int>(row.cells.size()); ++column)
        texts.append(row.text(column));
    for (const int column : columns)
        texts.append(row.text(column));
    return texts.join(u'|');
}

/// One line for each row of a list.
inline QStringList linesOf(const toolkit::ListRows& rows, const QList<int>& columns = {})
{
    QStringList lines;
    for (int row = 0; row < rows.count(); ++row)
        lines.append(lineOf(rows.row(row), columns));
    return lines;
}

} // namespace kalmo::tests
