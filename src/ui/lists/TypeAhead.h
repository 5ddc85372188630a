#pragma once

#include "toolkit/ListRows.h"

#include <QElapsedTimer>

#include <functional>

namespace kalmo::ui {

/// Finds the row whose name begins with the letters that a user types one after the other. After a pause the
/// next letter is the first.
class TypeAhead
{
public:
    /// Takes the next letters and returns the row that they lead to from the current one, -1 for none.
    /// Repeating one letter goes from row to row. Rows for which `isShown` returns false are skipped.
    int find(const toolkit::ListRows& rows, const QString& letters,
             const std::function<bool(int row)>& isShown);

private:
    QString m_typed;
    QElapsedTimer m_sinceLast;
};

} // namespace kalmo::ui
