#pragma once

#include "handset/Timers.h"

namespace kalmo::handset {

/// Watches for the way out of data mode: silence, "+++", silence. All other bytes pass through.
class EscapeWatch
{
public:
    struct Outcome
    {
        std::function<void(const QByteArray&)> pass;
        std::function<void()> escape;
        std::function<void()> spoilt; ///< the pluses came in time, but other bytes right after them
    };

    /// `guard` is the length of each silence in seconds.
    EscapeWatch(TimeSource& time, double guard, Outcome outcome)
        : m_timers(time), m_guard(guard), m_outcome(std::move(outcome))
    {
    }

    void receive(const QByteArray& bytes);
    /// Silence counts from now on.
    void reset();

private:
    void letGo();

    Timers m_timers;
    double m_guard;
    Outcome m_outcome;
    QByteArray m_held; // pluses that may be the beginning of an escape
    double m_lastByte = 0;
};

} // namespace kalmo::handset
