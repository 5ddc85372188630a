#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace kalmo::tests {

/// How a program ended, and all that it said. Paths of the temporary home read "HOME", times in the names of
/// backups "TIME".
struct ProgramRun
{
    int status = -1; ///< -1 if it crashed or did not end in time
    QString out = {};
    QString err = {};
};

/// A temporary home with the real programs in it: kalmoctl with a storage folder of its own, and the emulated
/// handset on a pseudo terminal. Runs in real time.
class RunningPrograms
{
public:
    RunningPrograms() = default;
    Q_DISABLE_COPY_MOVE(RunningPrograms)

    QString path(const QString& name) const { return m_home.filePath(name); }
    QString makeFile(const QString& name, const QByteArray& bytes) const;
    QByteArray contentOf(const QString& name) const;
    QString line() const { return path(QStringLiteral("line")); } ///< the handset's end of the cable

    /// Starts a handset, and waits until it is ready. Its memory is in "handset".
    bool startHandset(const QStringList& arguments);
    /// Where its terminal is, as it printed that.
    QString terminal() const { return m_terminal; }
    qint64 handsetId() const { return m_handset->processId(); }
    /// Names in the handset's memory, "phonebook" for example, in its order.
    QStringList namesIn(const QString& section) const;
    /// Ends the handset; what it has to complain about, empty if the client did nothing wrong.
    QString stopHandset();

    /// Runs kalmoctl to its end, without a terminal, with the handset's line as its port and its storage in
    /// "storage".
    ProgramRun kalmoctl(const QStringList& arguments);
    /// The same in two steps, for what happens in between.
    void startKalmoctl(const QStringList& arguments);
    ProgramRun finishKalmoctl();
    /// A process id for signals to the kalmoctl that runs.
    qint64 kalmoctlId() const { return m_kalmoctl->processId(); }

    /// Any other program in the same surroundings; "kalmoctl" and "kalmo-handset" are on its path.
    ProgramRun run(const QString& program, const QStringList& arguments);

    /// The only backup, empty if there is none.
    QString backup() const;

private:
    std::unique_ptr<QProcess> make() const;
    ProgramRun finish(QProcess& process) const;
    QString plain(const QByteArray& bytes) const;

    QTemporaryDir m_home;
    std::unique_ptr<QProcess> m_handset;
    QString m_terminal;
    std::unique_ptr<QProcess> m_kalmoctl;
};

} // namespace kalmo::tests
