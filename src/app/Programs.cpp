#include "app/Programs.h"

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

} // namespace

ProgramRun::ProgramRun(const ProgramCall& call) : m_process(new QProcess(this))
{
    prepare(*m_process, call);
    connect(m_process, &QProcess::readyReadStandardOutput, this, &ProgramRun::keepOutput);
    connect(m_process, &QProcess::readyReadStandardError, this, &ProgramRun::keepOutput);
    connect(m_process, &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        const RunEnd ended = status == 0 ? RunEnd::Done : RunEnd::Failed;
        conclude(how == QProcess::NormalExit ? ended : RunEnd::Crashed);
    });
    connect(m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) // no other signal follows
            conclude(RunEnd::NotStarted);
    });
}

ProgramRun::~ProgramRun()
{
    m_process->disconnect(this);
    if (m_isRunning)
        endNow(*m_process);
}

void ProgramRun::start()
{
    m_isRunning = true;
    m_process->start();
}

void ProgramRun::wait(int milliseconds)
{
    m_process->waitForFinished(milliseconds);
}

void ProgramRun::end(RunEnd reason)
{
    m_reason = reason;
    if (m_isRunning)
        endNow(*m_process);
}

void ProgramRun::keepOutput()
{
    keep(m_result.output, m_process->readAllStandardOutput());
    keep(m_errors, m_process->readAllStandardError());
}

void ProgramRun::conclude(RunEnd end)
{
    if (!m_isRunning)
        return;
    keepOutput();
    m_isRunning = false;
    m_result.end = m_reason.value_or(end);
    m_result.error =
        end == RunEnd::NotStarted ? m_process->errorString() : QString::fromLocal8Bit(m_errors).trimmed();
    Q_EMIT ended();
}

RunResult RunAndWait(Context& context, const ProgramCall& call, const toolkit::CancelBox* cancel)
{
    context.log.WriteDebugLog(u"Run"_s, call.file + u' ' + call.arguments.join(u' '));
    ProgramRun run(call);
    bool isCancelled = false;
    const double start = context.clock.Timer();
    for (run.start(); run.isRunning();) {
        run.wait(patience);
        if (run.isRunning())
            context.clock.DoEvents(slice);
        isCancelled = cancel && cancel->Checked();
        if (isCancelled)
            run.end(RunEnd::Cancelled);
        else if (context.clock.secondsSince(start) > call.longest)
            run.end(RunEnd::TooLong);
    }
    RunResult result = run.result();
    if (isCancelled) // just as it ended by itself
        result.end = RunEnd::Cancelled;
    context.log.WriteDebugLog(u"Run"_s, u"ended %1 %2"_s.arg(static_cast<int>(result.end)).arg(result.error));
    return result;
}

} // namespace kalmo::app
