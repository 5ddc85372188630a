#include "ui/lists/TypeAhead.h"

#include "toolkit/RowFilter.h"

#include <QGuiApplication>
#include <QStyleHints>

#include <algorithm>

namespace kalmo::ui {

bool TypeAhead::isTyping() const
{
    return m_sinceLast.isValid() &&
           m_sinceLast.elapsed() < QGuiApplication::styleHints()->keyboardInputInterval();
}

int TypeAhead::find(const toolkit::ListRows& rows, const QString& letters,
                    const std::function<bool(int row)>& isShown)
{
    if (!isTyping())
        m_typed.clear();
    m_sinceLast.start();
    m_typed += toolkit::foldedForSearch(letters);
    const bool isOneLetter = std::ranges::all_of(m_typed, [&](QChar letter) { return letter == m_typed[0]; });
    const QString wanted = isOneLetter ? m_typed.left(1) : m_typed;
    const int first = std::max(rows.current(), 0) + (isOneLetter && rows.current() >= 0 ? 1 : 0);
    for (int step = 0; step < rows.count(); ++step) {
        const int row = (first + step) % rows.count();
        const QString name = rows.text(row, 0).isEmpty() ? rows.text(row, 1) : rows.text(row, 0);
        if (isShown(row) && toolkit::foldedForSearch(name).startsWith(wanted))
            return row;
    }
    return -1;
}

} // namespace kalmo::ui
