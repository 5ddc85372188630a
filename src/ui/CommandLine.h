#pragma once

#include <QStringList>

namespace kalmo::ui {

/// The command line of the program.
struct CommandLine
{
    enum class Kind { Run, Help, Version, WrongUse };

    Kind kind = Kind::Run;
    QString storage; ///< folder for this run
    QString port;    ///< port for this run, a number or a device
    QString log;     ///< file that every exchange is logged to
    QString file;    ///< backup or address book to open after the start
    QString rest;    ///< all other arguments as one text: "/DBG" and "/DELINI"
    QString error;   ///< the error, for WrongUse
};

/// Reads the arguments after the program's name. If an option is given twice the last one counts.
CommandLine parseCommandLine(const QStringList& arguments);

QString commandLineHelp();

} // namespace kalmo::ui
