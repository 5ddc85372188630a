#pragma once

#include <QString>

class QSerialPort;

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

/// Claims a device that was just opened, so that no second Kalmo opens it. False if another one has it. The
/// claim ends when the port is closed.
bool claimPort(const QSerialPort& port);

/// What is said where claimPort() fails.
PortFault portInUse(const QString& devicePath);

} // namespace kalmo::link
