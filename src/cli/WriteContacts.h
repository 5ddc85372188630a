#pragma once

#include "cli/ContactChange.h"
#include "cli/FindPhone.h"

namespace kalmo::cli {

/// "phonebook write" for a handset with vCards: makes the phone hold exactly the contacts of the file.
ExitStatus writeContacts(Job& job, const operations::SavedList& file, PhoneState phone);

} // namespace kalmo::cli
