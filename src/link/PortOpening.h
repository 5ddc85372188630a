#pragma once

#include "link/mdlComm.h"

namespace kalmo::link {

/// Number of the port in use: the one given for this run, else the one in the settings.
int portNumber(const app::Context& context);

/// Takes the port in use, at a baud rate, for openPort(). The session record holds both.
void choosePort(app::Context& context, int rate);

/// Opens the chosen port, unless one is open, and prepares it for text at the chosen rate. Returns false if
/// it can't be opened; the port then gives the reason.
bool openPort(Line& line);

} // namespace kalmo::link
