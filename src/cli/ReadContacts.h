#pragma once

#include "cli/Job.h"
#include "phonedata/VcardStore.h"

namespace kalmo::cli {

/// "the phone says that it holds 26, but sent 25", for a reading that the phone's count does not confirm.
QString countDoubt(const phonedata::ContactReading& reading);

/// Reads the contacts of a phone that has been found, and once more if the phone's count does not confirm
/// them. With ExitDone there is a reading; anything else has been reported.
ExitStatus readPhoneContacts(Job& job, std::optional<phonedata::ContactReading>& reading);

/// Reads the contacts of a phone that has been found, and shows or saves them.
ExitStatus showContacts(Job& job);

} // namespace kalmo::cli
