#pragma once

#include "app/Context.h"
#include "cli/CliProgress.h"
#include "cli/Invocation.h"
#include "cli/Questions.h"
#include "link/mdlComm.h"
#include "link/PortTable.h"
#include "phonedata/PhoneMemory.h"

namespace kalmo::cli {

/// The services that a command works with.
struct Job
{
    const Invocation& invocation;
    app::Context& context;
    link::Line& line;
    link::PortTable& ports;
    phonedata::PhoneMemory& memory;
    Output& out;
    Questions& questions;
    CliProgress& progress;
    toolkit::CancelBox& stop;
    app::Desktop& desktop;

    int phoneType() const { return context.sy.PhoneType; }
    /// The port in use, for messages: "/dev/ttyUSB0 (COM3)"; without its number where the user named the
    /// device.
    QString portName() const;

    /// Reports that the user has asked for a stop, with the outcome. Returns false if nobody has. To be
    /// called before each change and each further query.
    bool reportInterruption(const QString& outcome = u"nothing was changed"_s);
};

/// Date and time as JSON has them: "2026-11-21T12:30:00".
QString isoTime(const QDateTime& moment);

} // namespace kalmo::cli
