#pragma once

#include "handset/Options.h"

#include <QStringList>

namespace kalmo::handset {

/// The command line of the program.
struct CommandLine
{
    enum Action { Run, PrintText, Refuse } action = Run;
    QString text = {}; ///< text to print: help, version, a list, or the error
    Options options = {};
    QString link = {};        ///< path of a symbolic link to the terminal; empty for none
    bool untilClosed = false; ///< ends when the client closes its port
};

/// Reads the arguments after the program's name.
CommandLine parseCommandLine(const QStringList& arguments);

} // namespace kalmo::handset
