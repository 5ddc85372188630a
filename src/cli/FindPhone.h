#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// Opens the port, finds the handset and its family, and sees to it that the command is for that family.
/// Anything but ExitDone has been told.
ExitStatus findPhone(Job& job);
/// The same for a command whose families depend on its arguments. `needs` names them in words.
ExitStatus findPhone(Job& job, bool (*fits)(int phoneType), QStringView needs);

} // namespace kalmo::cli
