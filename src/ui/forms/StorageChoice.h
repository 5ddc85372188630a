#pragma once

#include "app/Context.h"

namespace kalmo::ui {

/// Makes the folder and its "config", and returns true if it can be the storage. Shows a failure.
bool canBeStorage(app::Context& context, const QString& folder);

/// Makes a folder that can be the storage the storage from the next start on. The settings are copied, unless
/// the folder has some already; then the user is informed. Backups stay in their folder. A failure is shown
/// and changes nothing.
bool changeStorage(app::Context& context, const QString& folder);

} // namespace kalmo::ui
