#include "cli/Session.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/Version.h"

#include <QFileInfo>

#include <algorithm>
#include <cstdlib>

namespace kalmo::cli {

void Session::ImmediateEnding::end(int)
{
    std::_Exit(ExitFailed);
}

Session::Session(const Invocation& invocation, Output& out, Questions& questions)
    : m_invocation(invocation), m_out(out), m_questions(questions), m_dialogs(out, questions),
      m_machine(m_dialogs, m_ending), m_progress(out)
{
    m_machine.sy.Paths.Exe = m_machine.platform.ExePath();
    m_machine.sy.startDate = m_machine.clock.Now().toString(Qt::ISODate);
    m_machine.sy.PrgVersion = app::programVersion();
}

ExitStatus Session::run()
{
    if (!openStorage() || !choosePort() || !openLog())
        return ExitWrongUse;
    app::DetectOsClass(m_machine.context);
    Job job{m_invocation, m_machine.context, m_machine.line, m_machine.ports, m_memory,
            m_out,        m_questions,       m_progress,     m_stop,          m_machine.desktop};
    const ExitStatus status = m_invocation.command->run(job);
    m_progress.clear();
    return finish(status);
}

/// Reports output that could not be written.
ExitStatus Session::finish(ExitStatus status)
{
    const bool isLogged = m_machine.log.fault().isEmpty();
    if (!isLogged)
        m_out.error(u"could not write all lines of the log %1: %2."_s.arg(m_machine.sy.logPath,
                                                                          m_machine.log.fault()));
    return status == ExitDone && (!isLogged || !m_out.isComplete()) ? ExitFailed : status;
}

bool Session::openStorage()
{
    const QString given = m_invocation.value(u"--storage"_s);
    const QString path =
        given.isEmpty() ? app::currentStoragePath(m_machine.platform) : link::absolutePath(given);
    m_machine.sy.Paths.Storage = path;
    m_machine.sy.DefUserExpRoot = m_machine.platform.SpecialFolder(app::Folder::Documents, false);
    if (!app::EnsureDirExistsNoMsgBox(m_machine.context, path)) {
        m_out.error(u"could not make the storage folder %1."_s.arg(path));
        return false;
    }
    // If such a folder can't be made, the command that needs it reports that. Reading a phone needs none.
    for (const QString& folder : {app::workPath(m_machine.sy), app::backupFolder(m_machine.sy)})
        app::EnsureDirExistsNoMsgBox(m_machine.context, folder);
    return true;
}

bool Session::openLog()
{
    if (!m_invocation.has(u"--log"_s))
        return true;
    const QString path = link::absolutePath(m_invocation.value(u"--log"_s));
    return isFine(namesOtherFile(path) ? u"could not log to %1: the command uses that file itself"_s.arg(path)
                                       : m_machine.logTo(path));
}

/// Returns true if the command reads or writes that file.
bool Session::namesOtherFile(const QString& path) const
{
    static const QStringList fileArguments{u"FILE"_s, u"IN"_s, u"OUT"_s};
    const auto& arguments = m_invocation.command->arguments;
    const bool takesFiles = std::any_of(arguments.begin(), arguments.end(), [](const Argument& argument) {
        return fileArguments.contains(argument.name);
    });
    QStringList words{m_invocation.value(u"--output"_s)};
    if (takesFiles)
        words += m_invocation.arguments;
    return std::any_of(words.begin(), words.end(), [&path](const QString& word) {
        const QString target = QFileInfo(word).canonicalFilePath();
        return !word.isEmpty() && (link::absolutePath(word) == path ||
                                   (!target.isEmpty() && target == QFileInfo(path).canonicalFilePath()));
    });
}

bool Session::choosePort()
{
    const QString word = m_invocation.value(u"--port"_s);
    return !m_invocation.has(u"--port"_s) || isFine(m_machine.usePort(word));
}

bool Session::isFine(const QString& error)
{
    if (!error.isEmpty())
        m_out.error(error + u'.');
    return error.isEmpty();
}

} // namespace kalmo::cli
