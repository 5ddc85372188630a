#pragma once

#include <QDateTime>

namespace kalmo::toolkit {

inline constexpr double secondsPerDay = 86400;

/// Time and yielding. Everything that waits in the program waits through this interface, so that a test can
/// let hours pass in no time and look at every pause.
class Clock
{
public:
    virtual ~Clock() = default;

    /// Seconds since midnight, from 0 to below 86400. Falls back to 0 at midnight.
    virtual double Timer() const = 0;

    /// Local date and time.
    virtual QDateTime Now() const = 0;

    /// Yields to the event loop. Runs what is pending. If nothing is pending, sleeps until something happens
    /// or `seconds` have passed. Any event handler can run in here.
    virtual void DoEvents(double seconds = 0) = 0;

    /// Yields at least once, and until `seconds` have passed. A pause over midnight keeps its length.
    void WaitSeconds(double seconds);

    /// Seconds from `start`, an earlier value of Timer(), to now. Correct across one midnight.
    double secondsSince(double start) const;
};

} // namespace kalmo::toolkit
