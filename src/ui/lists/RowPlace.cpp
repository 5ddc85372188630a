#include "ui/lists/RowPlace.h"

#include "toolkit/ListRows.h"

#include <QHash>

#include <algorithm>

namespace kalmo::ui {

namespace {

constexpr QChar betweenTexts(u'\u001f');

/// A name for each row: its key, or its texts and the number of equal rows before it.
QStringList namesOf(const toolkit::ListRows& rows)
{
    QStringList names;
    QHash<QString, int> equalRows;
    for (int row = 0; row < rows.count(); ++row) {
        QString name = rows.row(row).key;
        if (name.isEmpty()) {
            for (const toolkit::ListCell& cell : rows.row(row).cells)
                name += cell.text + betweenTexts;
            name += QString::number(equalRows[name]++);
        }
        names.append(name);
    }
    return names;
}

/// The row itself if a search shows it, or else the next that is shown, or the last before it; -1 without
/// any.
int shownRowAt(const toolkit::ListRows& rows, int row)
{
    const auto isShown = [&rows](int each) { return !rows.row(each).hidden; };
    for (int each = std::max(row, 0); each < rows.count(); ++each) {
        if (isShown(each))
            return each;
    }
    while (row >= 0 && !isShown(row))
        --row;
    return row;
}

} // namespace

RowPlace::RowPlace(toolkit::ListRows& rows) : m_rows(rows), m_number(rows.current())
{
    const QStringList names = namesOf(rows);
    m_current = names.value(m_number);
    for (const int row : rows.selectedRows()) {
        m_selected.append(names[row]);
        m_number -= row < rows.current() ? 1 : 0;
    }
}

void RowPlace::restore()
{
    QHash<QString, int> rowOf;
    const QStringList names = namesOf(m_rows);
    for (int row = 0; row < names.size(); ++row)
        rowOf.insert(names[row], row);
    const int sameNumber = std::min(m_number, m_rows.count() - 1);
    const int current = m_current.isEmpty() ? -1 : shownRowAt(m_rows, rowOf.value(m_current, sameNumber));
    m_rows.setCurrent(current); // which selects it
    if (current >= 0)
        m_rows.setSelected(current, false);
    for (const QString& name : std::as_const(m_selected)) {
        const int row = rowOf.value(name, -1);
        if (row >= 0 && !m_rows.row(row).hidden)
            m_rows.setSelected(row, true);
    }
}

} // namespace kalmo::ui
