#include "ui/lists/RowPlace.h"

#include "toolkit/ListRows.h"

#include <algorithm>

namespace kalmo::ui {

namespace {

QString nameOf(const toolkit::ListRows& rows, int row)
{
    if (row < 0)
        return {};
    const QString& key = rows.row(row).key;
    return key.isEmpty() ? QString::number(row) : key;
}

int rowOf(const toolkit::ListRows& rows, const QString& name)
{
    if (const int row = rows.indexOfKey(name); row >= 0)
        return row;
    bool isNumber = false;
    const int row = name.toInt(&isNumber);
    return isNumber && row < rows.count() && rows.row(row).key.isEmpty() ? row : -1;
}

} // namespace

RowPlace::RowPlace(toolkit::ListRows& rows)
    : m_rows(rows), m_number(rows.current()), m_current(nameOf(rows, rows.current()))
{
    for (const int row : rows.selectedRows()) {
        m_selected.append(nameOf(rows, row));
        m_number -= row < rows.current() ? 1 : 0;
    }
}

void RowPlace::restore()
{
    if (m_current.isEmpty() || m_rows.count() == 0)
        return;
    const int same = rowOf(m_rows, m_current);
    const int current = same >= 0 ? same : std::min(m_number, m_rows.count() - 1);
    m_rows.setCurrent(current); // which selects it
    m_rows.setSelected(current, false);
    for (const QString& name : std::as_const(m_selected)) {
        if (const int row = rowOf(m_rows, name); row >= 0)
            m_rows.setSelected(row, true);
    }
}

} // namespace kalmo::ui
