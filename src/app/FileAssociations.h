#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Informs the user that no program is set for a file, with advice by its extension, and lets him choose one
/// where that can help.
void NoAssociationDialog(Context& context, Desktop& desktop, const QString& path, const QString& title);

/// Lets the user choose a program and opens the file with it.
void OpenWithDialog(Context& context, Desktop& desktop, const QString& path);

} // namespace kalmo::app
