#pragma once

#include <QString>

class QSerialPort;

namespace kalmo::link {

/// Reason why a serial device can't be opened, for the user.
struct PortFault
{
    QString german;
    QString english;
};

/// Examines a device that failed to open: missing, not permitted (with the group that owns it and advice) or
/// busy. `isRefused` is true if the system refused it, for want of a right or because the device is busy.
/// `systemText` is the system's text for any other reason, in the language of the locale.
PortFault examinePort(const QString& devicePath, bool isRefused, const QString& systemText);

/// Claims a device that was just opened, so that no second Kalmo opens it. Returns false if another one has
/// it. Closing the port ends the claim.
bool claimPort(const QSerialPort& port);

/// The reason to show after claimPort() failed.
PortFault portInUse(const QString& devicePath);

} // namespace kalmo::link
