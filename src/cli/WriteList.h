#pragma once

#include "cli/FindPhone.h"
#include "cli/Job.h"
#include "operations/SavedLists.h"
#include "phonedata/ClassicStore.h"

namespace kalmo::cli {

/// The commands that replace a list by the entries of a file: read the file, read the phone and save what it
/// holds, say what changes, ask, erase and write, read back and compare.
ExitStatus runWrite(Job& job, phonedata::Store store);
/// The same with the entries of a file that has been read.
ExitStatus writeEntries(Job& job, phonedata::Store store, operations::Entries wanted, PhoneState phone);

/// Adds entries to a list of a phone that has been found, after a question. `skipped` rows of their file are
/// left out; the result names that number.
ExitStatus appendEntries(Job& job, phonedata::Store store, operations::Entries extra, int skipped);

} // namespace kalmo::cli
