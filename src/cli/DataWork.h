#pragma once

#include "cli/Job.h"
#include "obex/clsMmc.h"
#include "obex/PhonePath.h"

namespace kalmo::cli {

using obex::endsInSlash;
using obex::PhonePath;

/// What is done while the phone is in its data mode. Its result has been shown, and what failed told.
using DataWork = std::function<ExitStatus(const std::shared_ptr<obex::clsMmc>& client)>;

/// Has the work done, by a phone that has been found. Whatever comes of it, the phone is taken back to AT
/// commands; if that can't be done it is told and fails the command. The work opens and closes the data
/// channel itself.
ExitStatus withClient(Job& job, const DataWork& work);

/// A change leaves a record, which is kept under the phone's serial number.
enum class Intent { Reads, Changes };

/// The same with a phone that is still to be found, and work that wants an open connection to the file
/// system.
ExitStatus withDataChannel(Job& job, Intent intent, const DataWork& work);

/// How work ends that the phone or the user broke off; tells the latter.
ExitStatus brokenOff(Job& job);

} // namespace kalmo::cli
