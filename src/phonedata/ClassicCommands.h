#pragma once

#include "phonedata/ClassicStore.h"
#include "phonedata/CommandResult.h"

namespace kalmo::phonedata {

/// Whether the list on screen differs from the phone's.
bool isDirty(const PhoneMemory& memory, Store store);
void setDirty(PhoneMemory& memory, Store store, bool dirty);

/// Question before unsaved changes of a list are passed over; ends in "Trotzdem fortfahren?".
QString unsavedChangesText(Store store);

/// The command "Lesen": asks where changes would be lost, reads the store into the list and clears the dirty
/// flag.
CommandResult readCommand(const StoreJob& job, Store store);

/// The command "Schreiben": backs the list up, makes sure that the phone answers and that what it holds is on
/// disk, then erases the store and writes the list. A write that fails says what the phone holds then and
/// where the backups lie; the list and its dirty flag stay as they are.
CommandResult writeCommand(const StoreJob& job, Store store);

} // namespace kalmo::phonedata
