#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Informs the user that no program is set for a file, with advice by its extension, and lets the user choose
/// a program if that can help. Returns true if the file was opened with it.
bool NoAssociationDialog(Context& context, Desktop& desktop, const QString& path, const QString& title);

/// Lets the user choose a program and opens the file with it. Returns true if the program was started.
bool OpenWithDialog(Context& context, Desktop& desktop, const QString& path);

} // namespace kalmo::app
