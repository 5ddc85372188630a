#include "ui/Engine.h"

#include "app/StoragePaths.h"

namespace kalmo::ui {

QString Engine::take(const CommandLine& commandLine)
{
    app::Sy& sy = m_machine.sy;
    if (!commandLine.storage.isEmpty())
        sy.StorageForThisRun = link::absolutePath(commandLine.storage);
    if (!commandLine.log.isEmpty()) {
        if (const QString error = m_machine.logTo(commandLine.log); !error.isEmpty())
            return error;
    }
    if (commandLine.port.isEmpty())
        return {};
    // The start sequence determines the folder once more, with its questions.
    sy.Paths.Storage =
        sy.StorageForThisRun.isEmpty() ? app::currentStoragePath(m_machine.platform) : sy.StorageForThisRun;
    return m_machine.usePort(commandLine.port);
}

} // namespace kalmo::ui
