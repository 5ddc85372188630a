#pragma once

#include "handset/Seams.h"

#include <memory>

namespace kalmo::handset {

/// Timers that can all be cancelled at once. The destructor cancels them.
class Timers
{
public:
    explicit Timers(TimeSource& time) : m_time(time) {}
    Q_DISABLE_COPY_MOVE(Timers)

    double now() const { return m_time.now(); }

    void after(double seconds, std::function<void()> action)
    {
        m_time.after(seconds, [alive = std::weak_ptr<int>(m_alive), action = std::move(action)] {
            if (alive.lock())
                action();
        });
    }

    /// Cancels all timers.
    void forgetAll() { m_alive = std::make_shared<int>(0); }

private:
    TimeSource& m_time;
    std::shared_ptr<int> m_alive = std::make_shared<int>(0);
};

} // namespace kalmo::handset
