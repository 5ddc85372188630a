#pragma once

#include "operations/SavedLists.h"

namespace kalmo::cli {

/// Warnings about the parts of an entry that a phone can't hold.
QStringList warningsAbout(const phonedata::ClassicEntry& entry, phonedata::Store store, int phoneType,
                          const phonedata::SoundList& sounds);

/// A line for each warning about a list, and for each field that the phone will hold otherwise, as `held`
/// says entry by entry; of very many the first only, and how many more there are.
QString warningLines(const operations::Entries& entries, const operations::Entries& held,
                     phonedata::Store store, int phoneType, const phonedata::SoundList& sounds);

} // namespace kalmo::cli
