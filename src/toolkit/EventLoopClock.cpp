#include "toolkit/EventLoopClock.h"

#include <QCoreApplication>
#include <QTimer>

#include <cmath>

namespace kalmo::toolkit {

EventLoopClock::EventLoopClock() : m_startOfRun(QTime::currentTime().msecsSinceStartOfDay() / 1000.0)
{
    m_sinceStart.start();
}

double EventLoopClock::Timer() const
{
    return std::fmod(m_startOfRun + m_sinceStart.nsecsElapsed() / 1e9, secondsPerDay);
}

QDateTime EventLoopClock::Now() const
{
    return QDateTime::currentDateTime();
}

void EventLoopClock::DoEvents(double seconds)
{
    if (seconds <= 0) {
        QCoreApplication::processEvents();
        return;
    }
    QTimer wake;
    wake.setSingleShot(true);
    wake.setTimerType(Qt::PreciseTimer);
    wake.start(static_cast<int>(std::ceil(seconds * 1000)));
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace kalmo::toolkit
