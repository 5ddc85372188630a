#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// What was read of the phone and goes into the file of `--output`.
struct Reading
{
    size_t count = 0;                       ///< entries
    bool isDoubtful = false;                ///< whether some may be missing or garbled
    std::function<QByteArray()> bytes = {}; ///< of the file
};

/// Saves what was read in the file of `--output`, if the user wants one. An older file of that name stays
/// where the reading is empty or doubtful: it may be the better copy. Both are noted. False has been told.
bool saveOutput(Job& job, const Reading& reading);

} // namespace kalmo::cli
