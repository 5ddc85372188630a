#pragma once

#include <cstdlib>
#include <functional>
#include <utility>

namespace kalmo::toolkit {

/// The one way out for what ends the program on the spot.
class Ending
{
public:
    virtual ~Ending() = default;

    /// What has to be brought to safety before the process ends, wherever that is decided. It runs once.
    void setLastWork(std::function<void()> work) { m_lastWork = std::move(work); }

    /// Ends the process behind the last work; no window is asked and no unload logic runs. Tests throw here.
    /// `status` is EXIT_SUCCESS where the user wished it so.
    [[noreturn]] void EndProgram(int status = EXIT_FAILURE)
    {
        if (const auto work = std::exchange(m_lastWork, nullptr))
            work();
        end(status);
        std::abort(); // end() never comes back
    }

protected:
    virtual void end(int status) = 0;

private:
    std::function<void()> m_lastWork;
};

} // namespace kalmo::toolkit
