#pragma once

#include "link/PortTable.h"

namespace kalmo::link {

inline constexpr int largestPort = 255;

/// Understands the port of a command line: "3", "COM3", "/dev/ttyUSB0", or "ttyUSB0" if /dev has such a name.
/// Returns its number for this run, 0 if it can't be a port.
int portForThisRun(PortTable& table, const QString& word);

} // namespace kalmo::link
