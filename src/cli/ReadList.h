#pragma once

#include "cli/Job.h"
#include "operations/SavedLists.h"

namespace kalmo::cli {

struct ListRead
{
    operations::Entries entries = {};
    bool isDoubtful = false; ///< something may have been skipped or garbled, in the second reading too
};

/// Reads a store of the phone, with the handset's own melodies ahead of it where they name sounds, and all of
/// it once more if the first reading is doubtful. Anything but ExitDone has been told.
ExitStatus readList(Job& job, phonedata::Store store, ListRead& read);

/// Reads a store of a phone that has been found, and shows or saves it.
ExitStatus showList(Job& job, phonedata::Store store);

} // namespace kalmo::cli
