#pragma once

#include "app/Context.h"

namespace kalmo::ui {

/// Makes another folder the storage from the next start on. The settings go along, unless the folder has some
/// already, which the user is told; backups stay where they are. A failure is shown, and nothing has changed
/// then.
bool changeStorage(app::Context& context, const QString& folder);

} // namespace kalmo::ui
