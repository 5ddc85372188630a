#pragma once

#include "phonedata/AreaCodes.h"
#include "phonedata/VcardStore.h"

namespace kalmo::phonedata {

/// What the commands of the vCard phonebook do around the store's operations.

/// Before a new contact: whether there is a free place. If not, the user is told.
bool mayAddContact(const VcardStore& store);

/// Before a contact is changed: whether its row has a valid LUID. If not, the user is told.
bool mayEditContact(const VcardStore& store, int row);

/// Saves a contact, in the place of that of `row` or as a new one with -1. Done and Failed as they say;
/// Refused means that it has no number, which the user has been told. After a failure the old row is still
/// there, under its key behind "temp_".
CommandResult saveContact(VcardStore& store, const tVcfEntry& entry, int row,
                          const toolkit::Progress& progress, VcardStore::Report* report = nullptr);

/// Whether a telephone column of any row has the letter f, as numbers have that the phone has spoiled.
bool hasWrongNumbers(const toolkit::ListRows& list);

/// The command "Neu Laden": area code check, read, check for wrong numbers. `editAreaCodes` shows the dialog
/// for the codes; `window`, which may be absent, is blocked while they are asked for.
CommandResult refreshContacts(VcardStore& store, const toolkit::Progress& progress,
                              toolkit::BusyWindow* window, const AreaCodeDialog& editAreaCodes);

} // namespace kalmo::phonedata
