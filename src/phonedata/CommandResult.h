#pragma once

namespace kalmo::phonedata {

enum class CommandResult {
    Done,
    Refused,  ///< the user said no, nothing was done
    Failed,   ///< and the user has been shown it
    Cancelled ///< by the user, in the middle
};

} // namespace kalmo::phonedata
