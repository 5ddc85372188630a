#pragma once

#include "obex/clsMmc.h"
#include "obex/PhonePath.h"

namespace kalmo::ui {

/// The file system panel's changes to names. Each keeps the client until it has ended, and tells the user
/// about a name that the phone cannot take and about a failure. Returns true if the phone holds the name.

bool makeFolder(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                const obex::PhonePath& in, const QString& name);
bool renameEntry(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                 const obex::PhonePath& from, const QString& name);

} // namespace kalmo::ui
