#pragma once

#include "phonedata/AreaCodes.h"
#include "phonedata/CommandResult.h"
#include "phonedata/VcardStore.h"

namespace kalmo::ui {

/// The commands of the vCard phonebook, with their questions and messages.

/// Returns true if there is a free place for a new contact. Shows the user that there is none.
bool allowNewContact(const phonedata::VcardStore& store);

/// Returns true if the row of a contact has a valid LUID. Shows the user that it has none.
bool allowChange(const phonedata::VcardStore& store, int row);

/// A contact in a form, from one save of it to the next.
struct EditedContact
{
    /// As the list shows it; nothing for a new one.
    std::optional<phonedata::tVcfEntry> shown = {};

    struct OpenSave
    {
        phonedata::tVcfEntry sent;
        phonedata::VcfCards before; ///< the phone's cards ahead of it
    };
    /// The last save, if its answer was lost: the phone may hold the contact or not.
    std::optional<OpenSave> openSave = {};
};

/// Saves a contact, in the place of the one that the form has shown or as a new one. After a save whose
/// answer was lost it looks first for the contact in the phone. Refused means that it has no number, or that
/// it may not replace the one in the phone. The user has been shown every result but Done. After a failure
/// the old row is still there, under its key with "temp_" before it.
phonedata::CommandResult saveContact(phonedata::VcardStore& store, const phonedata::tVcfEntry& entry,
                                     EditedContact& edited, const toolkit::Progress& progress);

/// Result of an import. Cancelled means that the user has stopped it, perhaps after some of the contacts.
struct ContactImport
{
    phonedata::CommandResult result = phonedata::CommandResult::Failed;
    int planned = 0;   ///< contacts that were to come
    int confirmed = 0; ///< of those, the first ones, which the phone has taken
};

/// Adds contacts in one session. Failures of the phone, and contacts that it holds otherwise, have been
/// shown.
ContactImport importContacts(phonedata::VcardStore& store, std::vector<phonedata::tVcfEntry> contacts,
                             const toolkit::Progress& progress);

/// Result of a deletion. Cancelled means that the user has stopped it, perhaps after some of the contacts.
struct ContactDeletion
{
    phonedata::CommandResult result = phonedata::CommandResult::Refused;
    int planned = 0; ///< contacts that were to go
    int deleted = 0; ///< of those, contacts that are gone from the phone
};

/// Refuses rows without a valid LUID, asks, and deletes the selected ones. After a failure the list is empty.
ContactDeletion VcfDeleteSelected(phonedata::VcardStore& store, const toolkit::Progress& progress);

/// The command "Neu laden": area code check, read, check for wrong numbers. `editAreaCodes` shows the dialog
/// for the codes; `window`, which may be absent, is blocked while they are queried.
phonedata::CommandResult refreshContacts(phonedata::VcardStore& store, const toolkit::Progress& progress,
                                         toolkit::BusyWindow* window,
                                         const phonedata::AreaCodeDialog& editAreaCodes);

} // namespace kalmo::ui
