#include "toolkit/Clock.h"

namespace kalmo::toolkit {

namespace {
// Timer() is a sum of floating-point steps: a pause must not be a whole step longer for a rounding error.
constexpr double roundingError = 1e-6;
} // namespace

void Clock::WaitSeconds(double seconds)
{
    const double start = Timer();
    double rest = seconds;
    do {
        DoEvents(rest);
        rest = seconds - secondsSince(start);
    } while (rest > roundingError);
}

double Clock::secondsSince(double start) const
{
    const double elapsed = Timer() - start;
    return elapsed < 0 ? elapsed + secondsPerDay : elapsed;
}

} // namespace kalmo::toolkit
