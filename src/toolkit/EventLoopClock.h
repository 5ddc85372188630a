#pragma once

#include "toolkit/Clock.h"

#include <QElapsedTimer>

namespace kalmo::toolkit {

/// The clock of the programs: Qt's event loop, and a time of day that no change of the system's clock
/// disturbs.
class EventLoopClock final : public Clock
{
public:
    EventLoopClock();

    double Timer() const override;
    QDateTime Now() const override;
    void DoEvents(double seconds = 0) override;

private:
    QElapsedTimer m_sinceStart;
    double m_startOfRun; // seconds since midnight
};

} // namespace kalmo::toolkit
