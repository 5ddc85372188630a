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

} // namespace

QList<SerialDevice> SystemDeviceList::devices()
{
    const auto stable = stableNames();
    QList<SerialDevice> found;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const QString path = info.systemLocation();
        found.append({path, stable.value(path), info.description(), info.manufacturer(), hardwareIdOf(info)});
    }
    return found;
}

} // namespace kalmo::link
