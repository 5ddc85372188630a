#pragma once

#include "app/Context.h"
#include "link/mdlComm.h"
#include "link/PortTable.h"
#include "phonedata/PhoneMemory.h"

namespace kalmo::ui {

/// The services that every form works with. Made once in main.
struct Program
{
    app::Context& context;
    link::Line& line;
    app::Desktop& desktop;
    link::PortTable& ports;
    phonedata::PhoneMemory& memory;
};

} // namespace kalmo::ui
