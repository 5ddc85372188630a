#pragma once

#include "app/SystemPlatform.h"
#include "cli/CliDialogs.h"
#include "cli/Job.h"
#include "cli/Stop.h"
#include "link/QtSerialPort.h"
#include "toolkit/EventLoopClock.h"

namespace kalmo::cli {

/// One run of a command: storage, settings, log, port, and everything else that the engine works with.
class Session
{
public:
    Session(const Invocation& invocation, Output& out, Questions& questions);
    ~Session();
    Q_DISABLE_COPY_MOVE(Session)

    ExitStatus run();

private:
    class ImmediateEnding final : public toolkit::Ending
    {
        [[noreturn]] void end() override;
    };

    bool openStorage();
    bool openLog();
    bool namesOtherFile(const QString& path) const;
    ExitStatus finish(ExitStatus status);
    bool choosePort();

    const Invocation& m_invocation;
    Output& m_out;
    Questions& m_questions;
    app::Sy m_sy;
    toolkit::EventLoopClock m_clock;
    CliDialogs m_dialogs;
    ImmediateEnding m_ending;
    app::SystemPlatform m_platform;
    app::SystemDesktop m_desktop;
    app::Settings m_settings;
    app::DebugLog m_log;
    app::Context m_context;
    link::SystemDeviceList m_devices;
    link::PortTable m_ports;
    link::QtSerialPort m_port;
    link::Line m_line;
    phonedata::PhoneMemory m_memory;
    CliProgress m_progress;
    StopBox m_stop;
};

} // namespace kalmo::cli
