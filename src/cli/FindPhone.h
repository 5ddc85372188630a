#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// Opens the port, finds the handset and its family, and sees to it that the command is for that family.
/// Anything but ExitDone has been told.
ExitStatus findPhone(Job& job);

} // namespace kalmo::cli
