#pragma once

#include "app/mdlDebugLog.h"
#include "phonedata/ClassicEntry.h"
#include "phonedata/VcfEntry.h"
#include "toolkit/Dialogs.h"
#include "transfer/import/Preview.h"

#include <optional>

namespace kalmo::transfer {

/// The result of the checks before an import of entries.
enum class ClassicStep {
    NothingChecked,
    Incomplete, ///< a checked row lacks its name or its number
    NumberTooLong,
    NameTooLong, ///< the user is asked if names are to be cut
    Ready
};

/// The first rule that holds for the checked rows (`ImportToClassicList`). A row without a name has its
/// number turned red.
ClassicStep nextClassicStep(Preview& preview);
/// The box for a step that stops the import.
toolkit::Message messageFor(ClassicStep step);
/// Cuts the checked rows that are red to the length of a name, and turns them green.
void shortenNames(Preview& preview);
toolkit::Message messageOfShortening();

/// The checked rows as entries. A birthday gets the sound "Optisch".
std::vector<phonedata::ClassicEntry> checkedEntries(const Preview& preview);
std::vector<phonedata::ProviderEntry> checkedProviders(const Preview& preview);
toolkit::Message messageOfTakenEntries();

/// The result of the checks before an import of contacts.
enum class VcardStep {
    NothingChecked,
    NoRoom,
    RoomUnknown, ///< the phone has not said how many places are free
    Ready,
};

/// Unchecks the checked rows without a number, and returns how many there were.
int uncheckNumberless(Preview& preview);
/// The first rule that holds for the checked rows (`ImportToVcardStore`). `freePlaces` is nothing where the
/// phone has not said it.
VcardStep nextVcardStep(const Preview& preview, std::optional<int> freePlaces);
toolkit::Message messageFor(VcardStep step, const Preview& preview, int freePlaces);
toolkit::Message messageOfUnchecked(int count);
/// The box for a row without a number that the user has checked.
toolkit::Message messageOfRefusedCheck();

/// The checked rows as contacts, each field cut to its length. The log gets each birthday that is read.
std::vector<phonedata::tVcfEntry> checkedContacts(const Preview& preview, app::DebugLog& log);

} // namespace kalmo::transfer
