#pragma once

#include "app/Context.h"

namespace kalmo::ui {

/// Makes another folder the storage from the next start on. The settings are copied, unless the folder has
/// some already; then the user is informed. Backups stay in their folder. A failure is shown and changes
/// nothing.
bool changeStorage(app::Context& context, const QString& folder);

} // namespace kalmo::ui
