#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// A reading of the phone for the file of `--output`.
struct Reading
{
    size_t count = 0;                       ///< entries
    bool isDoubtful = false;                ///< some may be missing or garbled
    std::function<QByteArray()> bytes = {}; ///< of the file
};

/// Returns true if the folder of `--output` can take a file, or the user wants none. Reports the failure
/// before a phone is read in vain.
bool canSaveOutput(Job& job);
/// The same for any file.
bool canWriteFile(Job& job, const QString& path);

/// Saves a reading in the file of `--output`, if the user wants one. If the reading is empty or doubtful an
/// older file of that name stays, since it may be the better copy. Returns false after it has reported a
/// failure. For a doubtful reading the caller reports the failure.
bool saveOutput(Job& job, const Reading& reading);

} // namespace kalmo::cli
