#pragma once

#include "link/PortTable.h"

namespace kalmo::link {

inline constexpr int largestPort = 255;

/// The port that somebody names on a command line: "3", "COM3", "/dev/ttyUSB0", or "ttyUSB0" where /dev has
/// such a name. Its number for this run, 0 if it can't be one.
int portForThisRun(PortTable& table, const QString& word);

} // namespace kalmo::link
