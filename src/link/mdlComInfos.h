#pragma once

#include "app/Context.h"
#include "link/PortTable.h"
#include "link/SPortAx.h"

#include <array>

namespace kalmo::link {

/// A device as the operating system's device list describes it.
struct DeviceEntry
{
    QString className;    ///< "PORTS", "USB", "MODEM" and others
    QString friendlyName; ///< for ports with their number in it: "Name (COM3)"
    QString maker;
    QString hardwareId;
    QString attachedTo; ///< for modems: the port, "COM3"
};

/// Descriptions of the serial ports by COM number.
class ComDescriptions
{
public:
    /// Rebuilds the table from a device list. The first device that claims a number keeps it.
    void RefreshComDesc(const QList<DeviceEntry>& devices);

    /// Description of a port, empty for an unknown one.
    QString GetComDescription(int number, QString& maker, QString& hardwareId) const;
    QString GetComDescription(int number) const;

private:
    struct Slot
    {
        bool filled = false;
        QString description;
        QString maker;
        QString hardwareId;
    };

    void fill(int number, const DeviceEntry& device, const QString& description);

    std::array<Slot, 256> m_slots;
};

/// The device list of the present ports, as the descriptions need it.
QList<DeviceEntry> deviceEntries(PortTable& ports);

/// Adds a number to an ascending list, before the first larger one. A number that is there already is left
/// out.
void AddPortSorted(QList<int>& numbers, int number);

/// The port list without the port object: the numbers of the port table.
class clsComEnum
{
public:
    explicit clsComEnum(PortTable& ports) : m_ports(ports) {}
    void Refresh();
    int CountPorts() const { return static_cast<int>(m_names.size()); }
    QString PortName(int index) const { return m_names.value(index); }

private:
    PortTable& m_ports;
    QStringList m_names;
};

/// Returns true if the port object can list its ports.
bool TestPortObject(SPortAx& port);

/// One line of the port box: "COM 3    (Name)", with four blanks after a number of one digit and two
/// otherwise.
QString portItemText(int number, const QString& name);
/// The number in such a line.
int portItemNumber(const QString& text);

/// Occasion of a port list, which decides how its steps are logged.
enum class PortListFor { Start, Rebuild };

/// Lists the ports with their descriptions: lines for the port box, in ascending order of their numbers.
QStringList listPorts(app::Context& context, SPortAx& port, PortTable& table, ComDescriptions& descriptions,
                      PortListFor purpose);

} // namespace kalmo::link
