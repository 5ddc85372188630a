#pragma once

#include <QStringList>

namespace kalmo::toolkit {
class ListRows;
}

namespace kalmo::ui {

/// Remembers the current row and the selected ones over a reading of the list: by their keys, or by their
/// texts where rows have none.
class RowPlace
{
public:
    explicit RowPlace(toolkit::ListRows& rows);

    /// Selects them again as far as they are there and a search shows them. If the current row is gone the
    /// one after it is current, but not selected.
    void restore();

private:
    toolkit::ListRows& m_rows;
    int m_number; // of the current row, without the selected ones before it
    QString m_current;
    QStringList m_selected;
};

} // namespace kalmo::ui
