#pragma once

#include "cli/Job.h"
#include "phonedata/ClassicStore.h"

namespace kalmo::cli {

/// The commands that replace a list by the entries of a file: read the file, read the phone and save what it
/// holds, say what changes, ask, erase and write, read back and compare.
ExitStatus runWrite(Job& job, phonedata::Store store);

} // namespace kalmo::cli
