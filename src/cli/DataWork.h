#pragma once

#include "cli/Job.h"
#include "cli/PhonePath.h"
#include "obex/clsMmc.h"

namespace kalmo::cli {

/// What is done while the phone is in its data mode. Its result has been shown, and what failed told.
using DataWork = std::function<ExitStatus(const std::shared_ptr<obex::clsMmc>& client)>;

/// Finds the phone, opens its data channel, does the work, and closes the channel whatever came of it; a line
/// that does not come back to AT commands is told and fails the command.
ExitStatus withDataChannel(Job& job, const DataWork& work);

/// The same for work that is an operation of the engine which opens and closes the channel itself.
ExitStatus withClient(Job& job, const DataWork& work);

/// How work ends that the phone or the user broke off; tells the latter.
ExitStatus brokenOff(Job& job);

/// Goes to a folder, unless the client is there. False has been told.
bool enterFolder(obex::clsMmc& client, const PhonePath& folder);

} // namespace kalmo::cli
