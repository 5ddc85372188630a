#pragma once

#include "link/mdlSearch.h"
#include "ui/Program.h"

namespace kalmo::ui {

/// Takes a phone at the port in use out of its data mode, ahead of a search, unless the user has enough of
/// the search. The port is closed then, so that the search opens it with its own settings.
void takeUnclosedBack(Program& program, link::SearchView& view);

} // namespace kalmo::ui
