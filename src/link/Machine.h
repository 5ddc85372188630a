#pragma once

#include "app/SystemPlatform.h"
#include "link/mdlComm.h"
#include "link/QtSerialPort.h"
#include "toolkit/EventLoopClock.h"

namespace kalmo::link {

/// One run of a program on this machine: everything that the engine works with, except the user and the way
/// out. Those each program has of its own.
struct Machine
{
    Machine(toolkit::Dialogs& dialogs, toolkit::Ending& ending);
    ~Machine();
    Q_DISABLE_COPY_MOVE(Machine)

    app::Sy sy;
    toolkit::EventLoopClock clock;
    app::SystemPlatform platform;
    app::SystemDesktop desktop{sy};
    app::Settings settings;
    app::DebugLog log;
    app::Context context;
    SystemDeviceList devices;
    PortTable ports;
    QtSerialPort port;
    Line line;

    /// Logs everything to the end of a file from now on. Returns the error, in English, or an empty text.
    QString logTo(const QString& path);

    /// Takes the port that a command line names. Needs the storage folder, as numbers of devices are
    /// settings. Returns the error, in English, or an empty text.
    QString usePort(const QString& word);
};

/// Makes a path of a command line absolute.
QString absolutePath(const QString& path);

} // namespace kalmo::link
