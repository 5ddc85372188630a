#pragma once

#include "app/Context.h"
#include "toolkit/Progress.h"

#include <QObject>
#include <QStringList>

#include <optional>

class QProcess;

namespace kalmo::app {

/// Another program that is run directly, without a shell, a window or an input.
struct ProgramCall
{
    QString file; ///< absolute path
    QStringList arguments = {};
    QString folder = {};    ///< its working folder, where its scratch files go too; empty for our own
    double longest = 30;    ///< seconds; a program that takes longer is ended
    qint64 mostMemory = 0;  ///< bytes; 0 for no limit
    qint64 largestFile = 0; ///< bytes that it may write into one file; 0 for no limit
};

enum class RunEnd { Done, Failed, NotStarted, Crashed, TooLong, Cancelled };

struct RunResult
{
    RunEnd end = RunEnd::NotStarted; ///< Done: it ended by itself with status 0
    QByteArray output = {};          ///< the first bytes of its standard output
    QString error = {};              ///< the first bytes of its standard error
};

/// A program that runs beside the event loop. The destructor ends it at once.
class ProgramRun : public QObject
{
    Q_OBJECT

public:
    explicit ProgramRun(const ProgramCall& call);
    ~ProgramRun() override;

    void start(); ///< emits ended(), at once if the program can't be started
    bool isRunning() const { return m_isRunning; }
    /// Waits for the end without yielding, at most so many milliseconds.
    void wait(int milliseconds);
    /// Ends it at once, for this reason.
    void end(RunEnd reason);
    /// Valid after the end.
    const RunResult& result() const { return m_result; }

Q_SIGNALS:
    void ended();

private:
    void keepOutput();
    void conclude(RunEnd end);

    QProcess* m_process;
    bool m_isRunning = false;
    std::optional<RunEnd> m_reason; // it was ended
    RunResult m_result;
    QByteArray m_errors;
};

/// Runs a program and waits for its end, yielding meanwhile. It is ended if it takes too long, if the user
/// cancels, and with our own process.
RunResult RunAndWait(Context& context, const ProgramCall& call, const toolkit::CancelBox* cancel = nullptr);

/// Sets the limits of a call for a process that is about to start, and ties it to ours, as far as the
/// platform can.
void confine(QProcess& process, const ProgramCall& call);

/// Ends a confined process and everything that it has started at once, and waits for their end.
void endNow(QProcess& process);

} // namespace kalmo::app
