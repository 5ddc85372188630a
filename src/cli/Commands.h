#pragma once

#include "cli/Command.h"

namespace kalmo::cli {

/// The functions of the command table.
ExitStatus runPorts(Job& job);
ExitStatus runFind(Job& job);
ExitStatus runStatus(Job& job);
ExitStatus runClockSet(Job& job);
ExitStatus runPhonebookRead(Job& job);
ExitStatus runPhonebookWrite(Job& job);
ExitStatus runProvidersRead(Job& job);
ExitStatus runProvidersWrite(Job& job);
ExitStatus runRingtones(Job& job);
ExitStatus runRingtonesSet(Job& job);

} // namespace kalmo::cli
