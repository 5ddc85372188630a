#pragma once

#include "app/SystemPlatform.h"
#include "link/QtSerialPort.h"
#include "toolkit/EventLoopClock.h"
#include "ui/adaptors/QtDialogs.h"
#include "ui/CommandLine.h"
#include "ui/Program.h"

namespace kalmo::ui {

/// One run of the program: everything that the window's forms work with, bound to this machine.
class Engine
{
public:
    Engine();
    ~Engine();
    Q_DISABLE_COPY_MOVE(Engine)

    /// Takes over what the command line says for this run. What is wrong with it, in English; empty if
    /// nothing is.
    QString take(const CommandLine& commandLine);

    Program& program() { return m_program; }

private:
    app::Sy m_sy;
    toolkit::EventLoopClock m_clock;
    QtDialogs m_dialogs;
    QtEnding m_ending;
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
    Program m_program;
};

} // namespace kalmo::ui
