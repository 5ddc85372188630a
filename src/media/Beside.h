#pragma once

#include "media/Failure.h"
#include "toolkit/Clock.h"
#include "toolkit/Progress.h"

#include <chrono>
#include <future>
#include <stop_token>

namespace kalmo::media {

inline constexpr double longestWork = 30; ///< seconds after which work is stopped, as a converter is

/// Result of work beside the event loop. If the work was stopped, `stopped` is the reason and the result is
/// of no use.
template <typename Result>
struct WorkEnd
{
    Result result;
    std::optional<Fault> stopped = {}; ///< Cancelled or TooLong
};

/// Runs work in a thread of its own and yields meanwhile, so that a window goes on painting. The work must
/// touch nothing that others may touch. It takes a std::stop_token and ends soon after a stop is requested.
template <typename Work>
auto beside(toolkit::Clock& clock, const toolkit::CancelBox* cancel, Work work)
{
    constexpr auto look = std::chrono::milliseconds(1);
    constexpr double slice = 0.005; // seconds
    std::stop_source stop;
    const double start = clock.Timer();
    auto future = std::async(std::launch::async, std::move(work), stop.get_token());
    std::optional<Fault> stopped;
    do {
        clock.DoEvents(slice);
        if (!stopped && cancel && cancel->Checked())
            stopped = Fault::Cancelled;
        else if (!stopped && clock.secondsSince(start) > longestWork)
            stopped = Fault::TooLong;
        if (stopped)
            stop.request_stop();
    } while (future.wait_for(look) != std::future_status::ready);
    return WorkEnd<decltype(future.get())>{future.get(), stopped};
}

} // namespace kalmo::media
