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

/// Whether the folder of `--output`, if the user wants a file, can take one. False has been told, before a
/// phone is read in vain.
bool canSaveOutput(Job& job);

/// Saves what was read in the file of `--output`, if the user wants one. An older file of that name stays
/// where the reading is empty or doubtful: it may be the better copy. False has been told; so has an older
/// file that stays for a doubt, which the caller tells too.
bool saveOutput(Job& job, const Reading& reading);

} // namespace kalmo::cli
