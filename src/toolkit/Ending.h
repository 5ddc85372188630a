#pragma once

#include <cstdlib>
#include <functional>
#include <utility>

namespace kalmo::toolkit {

/// The one way out for everything that ends the program on the spot.
class Ending
{
public:
    virtual ~Ending() = default;

    /// Sets the work that saves what would be lost when the process ends. It runs once, wherever the end is
    /// decided.
    void setLastWork(std::function<void()> work) { m_lastWork = std::move(work); }

    /// Does the last work and ends the process. No window is asked and no unload logic runs. Tests throw
    /// here. `status` is EXIT_SUCCESS if the user wished the end.
    [[noreturn]] void EndProgram(int status = EXIT_FAILURE)
    {
        if (const auto work = std::exchange(m_lastWork, nullptr))
            work();
        end(status);
        std::abort(); // end() never returns
    }

protected:
    virtual void end(int status) = 0;

private:
    std::function<void()> m_lastWork;
};

} // namespace kalmo::toolkit
