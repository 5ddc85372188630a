#pragma once

#include "cli/Job.h"
#include "obex/clsMmc.h"
#include "obex/PhonePath.h"

namespace kalmo::cli {

using obex::endsInSlash;
using obex::PhonePath;

/// Work during the phone's data mode. It shows its own result and failures.
using DataWork = std::function<ExitStatus(const std::shared_ptr<obex::clsMmc>& client)>;

/// Runs the work with a phone that has been found, and takes the phone back to AT commands in any case. If
/// that fails it reports the failure, and the command fails. The work opens and closes the data channel
/// itself.
ExitStatus withClient(Job& job, const DataWork& work);

/// A change leaves a record, which is kept under the phone's serial number.
enum class Intent { Reads, Changes };

/// The same with a phone that is still to be found, and work that wants an open connection to the file
/// system.
ExitStatus withDataChannel(Job& job, Intent intent, const DataWork& work);

/// Exit status of work that failed or that the user interrupted. Reports an interruption.
ExitStatus brokenOff(Job& job);

} // namespace kalmo::cli
