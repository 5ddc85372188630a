#pragma once

#include "cli/Job.h"
#include "phonedata/VcardStore.h"

namespace kalmo::cli {

/// "the phone says that it holds 26, but sent 25", for a reading that is not whole.
QString countMismatch(const phonedata::ContactReading& reading);

/// Reads the contacts of a phone that has been found, and shows or saves them.
ExitStatus showContacts(Job& job);

} // namespace kalmo::cli
