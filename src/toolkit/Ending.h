#pragma once

#include <cstdlib>

namespace kalmo::toolkit {

/// The one way out for what ends the program on the spot.
class Ending
{
public:
    virtual ~Ending() = default;

    /// Ends the process at once; no window is asked and no unload logic runs. Tests throw here.
    [[noreturn]] void EndProgram()
    {
        end();
        std::abort(); // end() never comes back
    }

protected:
    virtual void end() = 0;
};

} // namespace kalmo::toolkit
