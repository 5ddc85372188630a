#pragma once

#include "app/Context.h"
#include "toolkit/ListRows.h"

namespace kalmo::ui {

/// Informs the user that a function comes with a later version: "Der Export von Listen", for example.
void tellLaterVersion(app::Context& context, const QString& what);

/// Returns true if there is nothing to save, after it has informed the user.
bool tellIfEmpty(app::Context& context, const toolkit::ListRows& rows);

} // namespace kalmo::ui
