#pragma once

#include "app/Sy.h"
#include "link/mdlComm.h"

#include <QScopedValueRollback>

namespace kalmo::link {

/// Puts the line on another port for a while. The line is closed at first. The settings of the own port come
/// back at the end; the line then stays as the work left it.
class BorrowedPort
{
public:
    BorrowedPort(Line& line, int number)
        : m_number(line.context().sy.ComNoForThisRun, number), m_shownNumber(line.context().sy.ComNo),
          m_settings(line.context().sy.ComSettings)
    {
        line.ClosePort();
    }

private:
    QScopedValueRollback<int> m_number;
    QScopedValueRollback<int> m_shownNumber;
    QScopedValueRollback<QString> m_settings;
};

} // namespace kalmo::link
