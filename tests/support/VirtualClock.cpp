#include "support/VirtualClock.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

namespace kalmo::tests {

namespace {

constexpr qint64 microsecondsPerDay = 86400LL * 1000000;
constexpr qint64 leastStep = 1000;

qint64 toMicroseconds(double seconds)
{
    return std::llround(seconds * 1e6);
}

} // namespace

double VirtualClock::Timer() const
{
    const qint64 startOfRun = m_start.time().msecsSinceStartOfDay() * 1000LL;
    return static_cast<double>((startOfRun + m_microseconds) % microsecondsPerDay) / 1e6;
}

QDateTime VirtualClock::Now() const
{
    return m_start.addMSecs(m_microseconds / 1000);
}

void VirtualClock::DoEvents(double seconds)
{
    const QScopedValueRollback yields(m_yields, m_yields + 1);
    if (m_toolkitEvents)
        QCoreApplication::processEvents();
    const qint64 end = m_microseconds + std::max(toMicroseconds(seconds), leastStep);
    if (m_events.empty() || m_events.begin()->first > end) {
        m_microseconds = end;
        return;
    }
    const auto next = m_events.begin();
    m_microseconds = std::max(m_microseconds, next->first);
    const auto action = std::move(next->second);
    m_events.erase(next);
    action();
}

void VirtualClock::after(double seconds, std::function<void()> action)
{
    m_events.emplace(m_microseconds + toMicroseconds(seconds), std::move(action));
}

} // namespace kalmo::tests
