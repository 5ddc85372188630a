#pragma once

#include "handset/Options.h"

#include <QStringList>

namespace kalmo::handset {

/// What the program was asked to do.
struct CommandLine
{
    enum Action { Run, PrintText, Refuse } action = Run;
    QString text = {}; ///< to print: help, version, a list; or what is wrong
    Options options = {};
    QString link = {};        ///< path of a symbolic link to the terminal; empty for none
    bool untilClosed = false; ///< ends when the client closes its port
};

/// Reads the arguments behind the program's name.
CommandLine parseCommandLine(const QStringList& arguments);

} // namespace kalmo::handset
