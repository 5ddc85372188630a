#include "cli/Session.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "link/PortChoice.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>

namespace kalmo::cli {

namespace {

QString absolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

void Session::ImmediateEnding::end()
{
    std::_Exit(ExitFailed);
}

Session::Session(const Invocation& invocation, Output& out, Questions& questions)
    : m_invocation(invocation), m_out(out), m_questions(questions), m_dialogs(out, questions),
      m_settings(m_sy),
      m_log(m_sy, m_clock, {}), m_context{m_sy, m_clock, m_dialogs, m_ending, m_platform, m_settings, m_log},
      m_ports(m_settings, m_devices), m_port(m_ports), m_line(m_context, m_port), m_progress(out)
{
    m_sy.Paths.Exe = m_platform.ExePath();
    m_sy.startDate = m_clock.Now().toString(Qt::ISODate);
    m_sy.PrgVersion = app::programVersion();
}

Session::~Session()
{
    m_line.ClosePort();
}

ExitStatus Session::run()
{
    if (!openStorage() || !choosePort() || !openLog())
        return ExitWrongUse;
    app::DetectOsClass(m_context);
    Job job{m_invocation, m_context,   m_line,     m_ports, m_memory,
            m_out,        m_questions, m_progress, m_stop,  m_desktop};
    const ExitStatus status = m_invocation.command->run(job);
    m_progress.clear();
    return finish(status);
}

/// Nothing that was to be written may lack without a word.
ExitStatus Session::finish(ExitStatus status)
{
    const bool isLogged = m_log.fault().isEmpty();
    if (!isLogged)
        m_out.error(
            u"the log %1 lacks lines that could not be written: %2."_s.arg(m_sy.logPath, m_log.fault()));
    return status == ExitDone && (!isLogged || !m_out.isComplete()) ? ExitFailed : status;
}

bool Session::openStorage()
{
    const QString given = m_invocation.value(u"--storage"_s);
    const QString path = given.isEmpty() ? app::currentStoragePath(m_platform) : absolute(given);
    m_sy.Paths.Storage = path;
    m_sy.DefUserExpRoot = m_platform.SpecialFolder(app::Folder::Documents, false);
    if (!app::EnsureDirExistsNoMsgBox(m_context, path)) {
        m_out.error(u"the storage folder %1 does not exist and can't be made."_s.arg(path));
        return false;
    }
    // A folder that can't be made is told by whoever needs it: reading a phone needs none.
    for (const QString& name : {u"config/temp"_s, u"Backup"_s})
        app::EnsureDirExistsNoMsgBox(m_context, QDir(path).filePath(name));
    return true;
}

bool Session::openLog()
{
    if (!m_invocation.has(u"--log"_s))
        return true;
    m_sy.logPath = absolute(m_invocation.value(u"--log"_s));
    if (namesOtherFile(m_sy.logPath)) {
        m_out.error(u"%1 can't be the log as well."_s.arg(m_sy.logPath));
        return false;
    }
    QFile file(m_sy.logPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append)) {
        m_out.error(u"the log %1 can't be written: %2."_s.arg(m_sy.logPath, file.errorString()));
        return false;
    }
    m_sy.debug = true;
    m_sy.logKeepsAll = true; // how a phone was looked for is what a log is asked for most
    return true;
}

/// Whether the command reads or writes that file.
bool Session::namesOtherFile(const QString& path) const
{
    const QStringList words = m_invocation.arguments + QStringList{m_invocation.value(u"--output"_s)};
    return std::any_of(words.begin(), words.end(), [&path](const QString& word) {
        const QString target = QFileInfo(word).canonicalFilePath();
        return !word.isEmpty() && (absolute(word) == path ||
                                   (!target.isEmpty() && target == QFileInfo(path).canonicalFilePath()));
    });
}

bool Session::choosePort()
{
    if (!m_invocation.has(u"--port"_s))
        return true;
    const QString word = m_invocation.value(u"--port"_s);
    const int number = link::portForThisRun(m_ports, word);
    if (number == 0) {
        m_out.error(
            u"%1 is no port; say a number from 1 to %2, or a device."_s.arg(word).arg(link::largestPort));
        return false;
    }
    m_sy.ComNoForThisRun = number;
    return true;
}

} // namespace kalmo::cli
