#pragma once

namespace kalmo::phonedata {

enum class CommandResult {
    Done,
    Refused,  ///< nothing was done: the user said no, or was shown why
    Failed,   ///< and the user has been shown it
    Cancelled ///< by the user, in the middle
};

} // namespace kalmo::phonedata
