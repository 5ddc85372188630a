#pragma once

#include "cli/CliDialogs.h"
#include "cli/Job.h"
#include "cli/Stop.h"
#include "link/Machine.h"

namespace kalmo::cli {

/// One run of a command: storage, settings, log, port, and everything else that the engine works with.
class Session
{
public:
    Session(const Invocation& invocation, Output& out, Questions& questions);
    Q_DISABLE_COPY_MOVE(Session)

    ExitStatus run();

private:
    class ImmediateEnding final : public toolkit::Ending
    {
        [[noreturn]] void end(int status) override;
    };

    bool openStorage();
    bool openLog();
    bool namesOtherFile(const QString& path) const;
    ExitStatus finish(ExitStatus status);
    bool choosePort();
    bool isFine(const QString& error);

    const Invocation& m_invocation;
    Output& m_out;
    Questions& m_questions;
    CliDialogs m_dialogs;
    ImmediateEnding m_ending;
    link::Machine m_machine;
    phonedata::PhoneMemory m_memory;
    CliProgress m_progress;
    StopBox m_stop;
};

} // namespace kalmo::cli
