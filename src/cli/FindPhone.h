#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// A command that writes a list may have found its phone already.
enum class PhoneState { ToFind, Found };

/// Opens the port, finds the handset and its family, and refuses a handset that the command is not for.
/// Reports each failure.
ExitStatus findPhone(Job& job);
/// The same for a command whose handsets depend on its arguments: `handset` are those `use`, such as "for
/// contacts".
ExitStatus findPhone(Job& job, const HandsetKind& handset, const QString& use);

} // namespace kalmo::cli
