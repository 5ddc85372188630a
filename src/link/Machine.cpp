#include "link/Machine.h"

#include "link/PortChoice.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kalmo::link {

using namespace Qt::StringLiterals;

Machine::Machine(toolkit::Dialogs& dialogs, toolkit::Ending& ending)
    : settings(sy),
      log(sy, clock, platform.SpecialFolder(app::Folder::Desktop, false)), context{sy,     clock,    dialogs,
                                                                                   ending, platform, settings,
                                                                                   log},
      ports(settings, devices), port(ports), line(context, port)
{
}

Machine::~Machine()
{
    line.sendOwed();
    line.ClosePort();
}

QString Machine::logTo(const QString& path)
{
    sy.logPath = absolutePath(path);
    QFile file(sy.logPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return u"could not write the log %1: %2"_s.arg(sy.logPath, file.errorString());
    sy.debug = true;
    sy.logKeepsAll = true; // most logs are wanted because of the search
    return {};
}

QString Machine::usePort(const QString& word)
{
    sy.ComNoForThisRun = portForThisRun(ports, word);
    if (sy.ComNoForThisRun > 0)
        return {};
    return u"could not use the port %1: give a number from 1 to %2, or a device"_s.arg(
        word, QString::number(largestPort));
}

QString absolutePath(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace kalmo::link
