#pragma once

#include "app/SystemPlatform.h"
#include "link/mdlComm.h"
#include "link/QtSerialPort.h"
#include "toolkit/EventLoopClock.h"

namespace kalmo::link {

/// One run of a program on this machine: everything that the engine works with but the user and the way out,
/// which each program has of its own.
struct Machine
{
    Machine(toolkit::Dialogs& dialogs, toolkit::Ending& ending);
    ~Machine();
    Q_DISABLE_COPY_MOVE(Machine)

    app::Sy sy;
    toolkit::EventLoopClock clock;
    app::SystemPlatform platform;
    app::SystemDesktop desktop;
    app::Settings settings;
    app::DebugLog log;
    app::Context context;
    SystemDeviceList devices;
    PortTable ports;
    QtSerialPort port;
    Line line;

    /// Logs everything to the end of a file from now on. What is wrong with it, in English; empty if nothing
    /// is.
    QString logTo(const QString& path);

    /// Takes the port that a command line names. Needs the storage folder, as numbers of devices are
    /// settings. What is wrong with it, as above.
    QString usePort(const QString& word);
};

/// A path of a command line as an absolute one.
QString absolutePath(const QString& path);

} // namespace kalmo::link
