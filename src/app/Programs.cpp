#include "app/Programs.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

constexpr double slice = 0.05;        // seconds between two looks
constexpr int patience = 6;           // milliseconds for the process alone, before the window has its turn
constexpr qsizetype mostKept = 65536; // bytes of each stream

/// Takes the bytes that have come, up to the limit.
void keep(QByteArray& kept, const QByteArray& come)
{
    kept.append(come.first(std::min(come.size(), mostKept - kept.size())));
}

void prepare(QProcess& process, const ProgramCall& call)
{
    process.setProgram(call.file);
    process.setArguments(call.arguments);
    process.setStandardInputFile(QProcess::nullDevice());
    if (!call.folder.isEmpty()) {
        process.setWorkingDirectory(call.folder);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, call.folder);
        process.setProcessEnvironment(environment);
    }
    confine(process, call);
}

RunEnd endOf(const QProcess& process)
{
    if (process.exitStatus() == QProcess::CrashExit)
        return RunEnd::Crashed;
    return process.exitCode() == 0 ? RunEnd::Done : RunEnd::Failed;
}

} // namespace

RunResult RunAndWait(Context& context, const ProgramCall& call, const toolkit::CancelBox* cancel)
{
    context.log.WriteDebugLog(u"Run"_s, call.file + u' ' + call.arguments.join(u' '));
    QProcess process;
    prepare(process, call);
    process.start();
    if (!process.waitForStarted())
        return {.end = RunEnd::NotStarted, .error = process.errorString()};

    RunResult result;
    QByteArray errors;
    std::optional<RunEnd> ended;
    const double start = context.clock.Timer();
    while (!ended && process.state() != QProcess::NotRunning) {
        if (!process.waitForFinished(patience))
            context.clock.DoEvents(slice);
        keep(result.output, process.readAllStandardOutput());
        keep(errors, process.readAllStandardError());
        if (cancel && cancel->Checked())
            ended = RunEnd::Cancelled;
        else if (context.clock.secondsSince(start) > call.longest)
            ended = RunEnd::TooLong;
    }
    if (process.state() != QProcess::NotRunning) {
        endNow(process);
    } else if (ended != RunEnd::Cancelled) {
        ended = endOf(process);
    }
    keep(result.output, process.readAllStandardOutput());
    keep(errors, process.readAllStandardError());
    result.end = *ended;
    result.error = QString::fromLocal8Bit(errors).trimmed();
    context.log.WriteDebugLog(u"Run"_s, u"ended %1 %2"_s.arg(static_cast<int>(result.end)).arg(result.error));
    return result;
}

} // namespace kalmo::app
