// Access to serial devices on Unix: rights, groups and the lock.

#include "link/PortAccess.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPort>

#include <cerrno>

#include <sys/file.h>
#include <unistd.h>

namespace kalmo::link {

using namespace Qt::StringLiterals;

namespace {

PortFault missing(const QString& path)
{
    return {u"Das Gerät %1 ist nicht vorhanden. Prüfen Sie, ob das Kabel eingesteckt ist."_s.arg(path),
            u"could not open %1: it does not exist. Is the cable plugged in?"_s.arg(path)};
}

PortFault notPermitted(const QString& path)
{
    const QFileInfo info(path);
    const QString group = info.group();
    if (group.isEmpty() || group == u"root"_s || !info.permission(QFile::ReadGroup | QFile::WriteGroup)) {
        return {
            u"Für das Gerät %1 fehlt Ihnen das Zugriffsrecht; es gehört %2 und der Gruppe %3, die es auch "
            u"nicht benutzen darf. Bitten Sie den Verwalter des Rechners um das Recht zum Lesen und "
            u"Schreiben."_s.arg(path, info.owner(), group),
            u"could not open %1: it belongs to %2, group %3, and the group may not use it either. Ask the "
            u"administrator for read and write access."_s.arg(path, info.owner(), group)};
    }
    return {u"Für das Gerät %1 fehlt Ihnen das Zugriffsrecht; es gehört der Gruppe %2. Nehmen Sie Ihr "
            u"Benutzerkonto in diese Gruppe auf (sudo usermod -aG %2 IhrName) und melden Sie sich danach neu "
            u"an."_s.arg(path, group),
            u"could not open %1: it belongs to the group %2. Join it (sudo usermod -aG %2 yourname) and "
            u"log in again."_s.arg(path, group)};
}

} // namespace

PortFault portInUse(const QString& devicePath)
{
    return {
        u"Das Gerät %1 wird bereits von einem anderen Programm benutzt. Beenden Sie dieses Programm."_s.arg(
            devicePath),
        u"could not open %1: another program uses it, perhaps Kalmo's window. Close that program."_s.arg(
            devicePath)};
}

bool claimPort(const QSerialPort& port)
{
    // This lock binds all programs that ask for it. The exclusive mode of a terminal does not bind the
    // superuser. A lock file is tied to a name, and a device can have several names.
    return flock(port.handle(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

PortFault examinePort(const QString& devicePath, bool isRefused, const QString& systemText)
{
    const QByteArray native = QFile::encodeName(devicePath);
    if (access(native.constData(), F_OK) != 0)
        return missing(devicePath);
    if (access(native.constData(), R_OK | W_OK) != 0)
        return notPermitted(devicePath);
    if (QFileInfo(devicePath).isFile() || QFileInfo(devicePath).isDir())
        return {u"%1 ist keine serielle Schnittstelle."_s.arg(devicePath),
                u"could not open %1: it is not a serial device."_s.arg(devicePath)};
    if (isRefused)
        return portInUse(devicePath);
    return {u"Das Gerät %1 lässt sich nicht öffnen: %2"_s.arg(devicePath, systemText),
            u"could not open %1: %2"_s.arg(devicePath, systemText)};
}

} // namespace kalmo::link
