#pragma once

#include "operations/ClassicReading.h"
#include "phonedata/CommandResult.h"

namespace kalmo::ui {

/// The command "Lesen": asks where changes would be lost, reads the store into the list and clears the dirty
/// flag.
phonedata::CommandResult readClassicList(const phonedata::StoreJob& job, phonedata::Store store);

/// The command "Schreiben": saves the list, makes sure that the phone answers, asks about all that would be
/// lost, and replaces the list in the phone by `rows`. The rows stay as they are. After a failure the dirty
/// flag stays, and a message says what the phone holds and where the backups are. `origin` is the phone's
/// content that the rows were made from, unknown for a list from a file. If the phone holds something else,
/// the user sees the difference first. After a change it is the phone's content as far as it is known.
phonedata::CommandResult writeClassicList(const operations::ListJob& job, const toolkit::ListRows& rows,
                                          phonedata::StoreContent& origin);

} // namespace kalmo::ui
