#pragma once

#include <QStringList>

namespace kalmo::ui {

/// What the program was called with.
struct CommandLine
{
    enum class Kind { Run, Help, Version, WrongUse };

    Kind kind = Kind::Run;
    QString storage; ///< folder for this run
    QString port;    ///< port for this run, a number or a device
    QString log;     ///< file that every exchange is logged to
    QString rest;    ///< everything else as one text: "/DBG" and "/DELINI"
    QString error;   ///< what is wrong, for WrongUse
};

/// Reads the arguments behind the program's name. The last of an option given twice counts.
CommandLine parseCommandLine(const QStringList& arguments);

QString commandLineHelp();

} // namespace kalmo::ui
