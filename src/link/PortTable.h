#pragma once

#include "app/mdlRegIni.h"
#include "link/DeviceList.h"

#include <QMap>

namespace kalmo::link {

/// Maps COM numbers to devices. A device gets the lowest free number when it is first seen and keeps it:
/// section `Ports` of the settings maps "COM<n>" to its lasting path. A number that the settings do not take
/// is kept in memory and offered to them again. Where the system numbers its ports itself, those numbers
/// hold.
class PortTable
{
public:
    PortTable(app::Settings& settings, DeviceList& devices);

    /// Numbers of the devices that are present, in ascending order. New devices are numbered here.
    QList<int> numbers();

    /// Present device of a number; empty paths where there is none.
    SerialDevice present(int number);

    /// Path to open for a number, empty if no device ever had it. The device need not be present.
    QString devicePath(int number);

    /// Number of a device path. A path without a number is given one.
    int numberOf(const QString& path);

    /// Gives the number to this device, for this run only.
    void useDevice(int number, const QString& path);

    /// Number of a device for this run. A device that is or was listed keeps its number. Any other gets the
    /// lowest that is free above all of those, which is not stored.
    int numberForThisRun(const QString& path);
    bool isForThisRun(int number) const { return m_forThisRun.contains(number); }

private:
    QMap<int, QString> remembered() const;
    void remember(int number, const QString& path);
    int lowestFree(const QMap<int, QString>& known) const;
    void refresh();

    app::Settings& m_settings;
    DeviceList& m_devices;
    QMap<int, SerialDevice> m_present;
    QMap<int, QString> m_forThisRun;
    QMap<int, QString> m_unsaved; // numbers given in this run that the settings did not take
};

} // namespace kalmo::link
