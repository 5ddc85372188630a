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
/// about it) or busy. `isRefused` says that the system refused it, which it does for want of a right and for
/// a busy device alike; `systemText` is its own word for anything else, in the language of the locale.
PortFault examinePort(const QString& devicePath, bool isRefused, const QString& systemText);

/// Claims a device that was just opened, so that no second Kalmo opens it. False if another one has it. The
/// claim ends when the port is closed.
bool claimPort(const QSerialPort& port);

/// What is said where claimPort() fails.
PortFault portInUse(const QString& devicePath);

} // namespace kalmo::link
