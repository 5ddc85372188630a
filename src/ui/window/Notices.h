#pragma once

#include "app/Context.h"
#include "toolkit/ListRows.h"
#include "ui/window/ToolbarTable.h"

namespace kalmo::ui {

/// The row that the command "Bearbeiten" means, -1 without one: of the selected rows the current one, or the
/// first; without any the current row, which has the frame of the focus. A row that a search hides is neither
/// selected nor current.
int rowToEdit(const toolkit::ListRows& rows);

/// Says that the list has no row that the command would act on. Empty if it has one, and for commands that
/// need none. `place` is the list: "Im Telefonbuch".
QString obstacleIn(const toolkit::ListRows& rows, Command command, const QString& place);

/// Returns true if there is nothing to save, after it has informed the user.
bool tellIfEmpty(app::Context& context, const toolkit::ListRows& rows);

} // namespace kalmo::ui
