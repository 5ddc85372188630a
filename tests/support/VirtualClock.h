#pragma once

#include "toolkit/Clock.h"

#include <functional>
#include <map>

namespace kalmo::tests {

/// Time that moves only when somebody yields: hours of waiting cost nothing, and every pause can be looked
/// at.
class VirtualClock : public toolkit::Clock
{
public:
    explicit VirtualClock(const QDateTime& start = QDateTime(QDate(2026, 11, 21), QTime(12, 0)))
        : m_start(start)
    {
    }

    double Timer() const override;
    QDateTime Now() const override;
    /// Runs the next event if one is due within `seconds`, else moves on by `seconds`; by a millisecond at
    /// least.
    void DoEvents(double seconds = 0) override;

    /// Has `action` run at the first yield that reaches its time.
    void after(double seconds, std::function<void()> action);

    /// Seconds since this clock was made.
    double elapsed() const { return static_cast<double>(m_microseconds) / 1e6; }

    /// Returns true while somebody waits: from within DoEvents().
    bool isYielding() const { return m_yields > 0; }

    /// Delivers the toolkit's own events at each yield, as windows need them.
    void runToolkitEvents(bool on) { m_toolkitEvents = on; }

private:
    QDateTime m_start;
    qint64 m_microseconds = 0;
    std::multimap<qint64, std::function<void()>> m_events;
    bool m_toolkitEvents = false;
    int m_yields = 0;
};

} // namespace kalmo::tests
