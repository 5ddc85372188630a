#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// A command that writes a list may have found its phone already.
enum class PhoneState { ToFind, Found };

/// Opens the port, finds the handset and its family, and refuses a handset that the command is not for.
/// Reports each failure.
ExitStatus findPhone(Job& job);
/// The same for a command whose families depend on its arguments. `needs` names them in words.
ExitStatus findPhone(Job& job, bool (*fits)(int phoneType), QStringView needs);

} // namespace kalmo::cli
