#include "ui/Engine.h"

#include "app/StoragePaths.h"
#include "link/PortChoice.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

QString absolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

Engine::Engine()
    : m_settings(m_sy), m_log(m_sy, m_clock, m_platform.SpecialFolder(app::Folder::Desktop, false)),
      m_context{m_sy, m_clock, m_dialogs, m_ending, m_platform, m_settings, m_log},
      m_ports(m_settings, m_devices), m_port(m_ports),
      m_line(m_context, m_port), m_program{m_context, m_line, m_desktop, m_ports, m_memory}
{
}

Engine::~Engine()
{
    m_line.ClosePort();
}

QString Engine::take(const CommandLine& commandLine)
{
    if (!commandLine.storage.isEmpty())
        m_sy.StorageForThisRun = absolute(commandLine.storage);
    if (!commandLine.log.isEmpty()) {
        m_sy.logPath = absolute(commandLine.log);
        QFile file(m_sy.logPath);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
            return u"the log %1 can't be written: %2"_s.arg(m_sy.logPath, file.errorString());
        m_sy.debug = true;
        m_sy.logKeepsAll = true;
    }
    if (commandLine.port.isEmpty())
        return {};
    // Numbers of devices are settings; the start sequence looks for their folder once more, with its
    // questions.
    m_sy.Paths.Storage =
        m_sy.StorageForThisRun.isEmpty() ? app::currentStoragePath(m_platform) : m_sy.StorageForThisRun;
    m_sy.ComNoForThisRun = link::portForThisRun(m_ports, commandLine.port);
    return m_sy.ComNoForThisRun > 0 ? QString()
                                    : u"%1 is no port; say a number from 1 to %2, or a device"_s.arg(
                                          commandLine.port, QString::number(link::largestPort));
}

} // namespace kalmo::ui
