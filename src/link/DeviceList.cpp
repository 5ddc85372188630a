#include "link/DeviceList.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSerialPortInfo>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

/// Maps device paths to names below by-id, which hold maker, product and serial number. Empty on a system
/// without that folder.
QHash<QString, QString> stableNames()
{
    QHash<QString, QString> names;
    const auto links = QDir(u"/dev/serial/by-id"_s).entryInfoList(QDir::System | QDir::Files);
    for (const QFileInfo& entry : links)
        names.insert(entry.canonicalFilePath(), entry.filePath());
    return names;
}

QString hardwareIdOf(const QSerialPortInfo& info)
{
    if (!info.hasVendorIdentifier())
        return {};
    return u"USB\\VID_%1&PID_%2"_s.arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
        .arg(info.productIdentifier(), 4, 16, QLatin1Char('0'))
        .toUpper();
}

int hexNumberIn(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt(nullptr, 16) : 0;
}

} // namespace

bool isModemInterface(const QString& folder)
{
    const auto number = [&](const QString& name) { return hexNumberIn(folder + u'/' + name); };
    const int protocol = number(u"bInterfaceProtocol"_s);
    return number(u"bInterfaceClass"_s) == 2 && number(u"bInterfaceSubClass"_s) == 2 && protocol >= 1 &&
           protocol <= 6;
}

QList<SerialDevice> SystemDeviceList::devices()
{
    const auto stable = stableNames();
    QList<SerialDevice> found;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const QString path = info.systemLocation();
        found.append({path, stable.value(path), info.description(), info.manufacturer(), hardwareIdOf(info),
                      isModemInterface(u"/sys/class/tty/%1/device"_s.arg(info.portName()))});
    }
    return found;
}

} // namespace kalmo::link
