#pragma once

#include "cli/Job.h"
#include "operations/ClassicReading.h"
#include "operations/SavedLists.h"

namespace kalmo::cli {

/// The way in which the command line reads a list: with the handset's own melodies ahead of it, and once more
/// if the first reading is doubtful.
inline constexpr operations::ReadPolicy readPolicy = {.readsMelodies = true, .readings = 2};

/// The needs of an operation on a list, with the line of progress as its display.
operations::ListJob listJob(Job& job, phonedata::Store store);

/// Prints why a list could not be read, and returns the exit status for it.
ExitStatus tellReadFailure(Job& job, phonedata::Store store, const operations::ListReading& reading);

struct ListRead
{
    operations::Entries entries = {};
    bool isDoubtful = false;        ///< the list is not sure, in the second reading either
    bool lacksOnlyMelodies = false; ///< with isDoubtful: only names of melodies are not sure
    QString doubt = {};             ///< the reason in words, without a full stop
};

/// Why a doubtful content is not sure, in words without a full stop: "the line was disturbed, ..."
QString doubtInWords(const phonedata::StoreContent& content);

/// Reads a store of a phone that has been found. Reports each failure.
ExitStatus readList(Job& job, phonedata::Store store, ListRead& read);

/// Reads a store of a phone that has been found, and shows or saves it.
ExitStatus showList(Job& job, phonedata::Store store);

} // namespace kalmo::cli
