#pragma once

#include "toolkit/ListRows.h"

#include <QElapsedTimer>

#include <functional>

namespace kalmo::ui {

/// Finds the row whose name begins with the letters that a user types one after the other. The name is in the
/// first column, or in the second where that one is empty: a contact without a last name. After a pause the
/// next letter is the first.
class TypeAhead
{
public:
    /// Takes the next letters and returns the row that they lead to from the current one, -1 for none.
    /// Repeating one letter goes from row to row. Rows for which `isShown` returns false are skipped.
    int find(const toolkit::ListRows& rows, const QString& letters,
             const std::function<bool(int row)>& isShown);

    /// Returns true if the next letters go on with the word that was begun.
    bool isTyping() const;

private:
    QString m_typed;
    QElapsedTimer m_sinceLast;
};

} // namespace kalmo::ui
