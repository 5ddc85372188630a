#pragma once

#include <QList>
#include <QString>

namespace kalmo::link {

/// A serial device that the operating system reports as present.
struct SerialDevice
{
    QString path; ///< "/dev/ttyUSB0", or "COM3" where the system has such names itself
    QString
        stablePath; ///< a name that survives replugging, such as one below /dev/serial/by-id; may be empty
    QString description; ///< friendly name
    QString maker;
    QString hardwareId;   ///< for example "USB\VID_067B&PID_2303"; empty if the bus has none
    bool isModem = false; ///< a USB interface that takes AT commands

    /// The name that the settings store.
    QString lastingPath() const { return stablePath.isEmpty() ? path : stablePath; }
};

class DeviceList
{
public:
    virtual ~DeviceList() = default;
    virtual QList<SerialDevice> devices() = 0;
};

/// Returns true if the folder of a device below /sys describes a modem: a USB interface of the communications
/// class (2), subclass "abstract control model" (2), with one of the protocols for AT commands (1 to 6, as
/// the USB class definitions for communications devices number them).
bool isModemInterface(const QString& folder);

/// The serial devices of this machine.
class SystemDeviceList final : public DeviceList
{
public:
    QList<SerialDevice> devices() override;
};

} // namespace kalmo::link
