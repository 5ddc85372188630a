#pragma once

#include "toolkit/Clock.h"

#include <chrono>
#include <future>

namespace kalmo::media {

/// Has work done in a thread of its own and yields meanwhile, so that a window goes on painting. The work
/// must touch nothing that others may touch.
template <typename Work>
auto beside(toolkit::Clock& clock, Work work)
{
    constexpr auto look = std::chrono::milliseconds(1);
    constexpr double slice = 0.005; // seconds
    auto result = std::async(std::launch::async, std::move(work));
    while (result.wait_for(look) != std::future_status::ready)
        clock.DoEvents(slice);
    return result.get();
}

} // namespace kalmo::media
