#include "support/RunningPrograms.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestRun = 60000; // milliseconds

QString programFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + u"/../bin"_s);
}

} // namespace

QString RunningPrograms::makeFile(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    QDir().mkpath(QFileInfo(file).path());
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

QByteArray RunningPrograms::contentOf(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::unique_ptr<QProcess> RunningPrograms::make() const
{
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, programFolder() + u':' + qEnvironmentVariable("PATH"));
    environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    environment.insert(u"TZ"_s, u"Europe/Berlin"_s);
    for (const QString& name : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.insert(name, m_home.path());
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(m_home.path());
    process->setStandardInputFile(QProcess::nullDevice());
    return process;
}

bool RunningPrograms::startHandset(const QStringList& arguments)
{
    m_handset = make();
    m_handset->start(programFolder() + u"/kalmo-handset"_s,
                     QStringList{u"--link"_s, line(), u"--state"_s, path(u"handset"_s)} + arguments);
    if (m_handset->waitForReadyRead(longestRun)) {
        m_terminal = QString::fromUtf8(m_handset->readLine()).trimmed();
        return true;
    }
    qWarning("%s", m_handset->readAllStandardError().constData());
    return false;
}

QStringList RunningPrograms::namesIn(const QString& section) const
{
    QStringList names;
    const QByteArray bytes = contentOf(u"handset/"_s + section + u".json"_s);
    for (const QJsonValue& entry : QJsonDocument::fromJson(bytes).array())
        names.append(entry[u"name"_s].toString());
    return names;
}

QString RunningPrograms::stopHandset()
{
    m_handset->terminate();
    const ProgramRun run = finish(*m_handset);
    return run.status == 0 && run.err.isEmpty() ? QString() : u"status %1: %2"_s.arg(run.status).arg(run.err);
}

ProgramRun RunningPrograms::kalmoctl(const QStringList& arguments)
{
    startKalmoctl(arguments);
    return finishKalmoctl();
}

void RunningPrograms::startKalmoctl(const QStringList& arguments)
{
    m_kalmoctl = make();
    m_kalmoctl->start(programFolder() + u"/kalmoctl"_s,
                      QStringList{u"--storage"_s, path(u"storage"_s), u"--port"_s, line()} + arguments);
}

ProgramRun RunningPrograms::finishKalmoctl()
{
    return finish(*m_kalmoctl);
}

ProgramRun RunningPrograms::run(const QString& program, const QStringList& arguments)
{
    const auto process = make();
    process->start(program, arguments);
    return finish(*process);
}

ProgramRun RunningPrograms::finish(QProcess& process) const
{
    const bool ended = process.waitForFinished(longestRun) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, plain(process.readAllStandardOutput()),
            plain(process.readAllStandardError())};
}

QString RunningPrograms::plain(const QByteArray& bytes) const
{
    static const QRegularExpression time(u"\\d{4}-\\d\\d-\\d\\d  \\d\\d-\\d\\d-\\d\\d"_s);
    return QString::fromUtf8(bytes).replace(m_home.path(), u"HOME"_s).replace(time, u"TIME"_s);
}

QString RunningPrograms::backup() const
{
    const QDir folder(path(u"storage/Backup"_s));
    const QStringList names = folder.entryList(QDir::Files);
    return names.size() == 1 ? folder.filePath(names.first()) : QString();
}

} // namespace kalmo::tests
