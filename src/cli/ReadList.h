#pragma once

#include "cli/Job.h"
#include "operations/SavedLists.h"

namespace kalmo::cli {

struct ListRead
{
    operations::Entries entries = {};
    bool isDoubtful = false; ///< something may have been skipped or garbled, in the second reading too
};

/// Reads a store of the phone. The handset's own melodies are read before it if they name sounds. A doubtful
/// reading is repeated once. Reports each failure.
ExitStatus readList(Job& job, phonedata::Store store, ListRead& read);

/// Reads a store of a phone that has been found, and shows or saves it.
ExitStatus showList(Job& job, phonedata::Store store);

} // namespace kalmo::cli
