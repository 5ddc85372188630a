#pragma once

#include "app/Context.h"
#include "toolkit/ListRows.h"

namespace kalmo::ui {

/// Says that something comes with a later version: "Der Export von Listen", for example.
void tellLaterVersion(app::Context& context, const QString& what);

/// True, told to the user, if there is nothing to save.
bool tellIfEmpty(app::Context& context, const toolkit::ListRows& rows);

} // namespace kalmo::ui
