#pragma once

#include <QString>

namespace kalmo::link {

/// Why a serial device can't be opened, for the user.
struct PortFault
{
    QString german;
    QString english;
};

/// Looks at a device that failed to open: missing, not permitted (with the group that owns it and what to do
/// about it) or busy. `systemText` is the system's own word for anything else.
PortFault examinePort(const QString& devicePath, const QString& systemText);

} // namespace kalmo::link
