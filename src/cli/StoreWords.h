#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::cli {

/// How the command line speaks of one of the two stores. Both hold entries of the same kind here; those of
/// the provider list have a name and a number only.
struct StoreWords
{
    QStringView name;     ///< "phonebook"
    QStringView commands; ///< first word of its commands
    bool hasDates;        ///< dates, VIP marks and sounds besides name and number
};

const StoreWords& wordsOf(phonedata::Store store);

/// Headings and cells of a table of entries.
QStringList entryHeadings(phonedata::Store store);
QStringList entryCells(const phonedata::ClassicEntry& entry, phonedata::Store store);

/// "1 entry", "12 entries".
QString entryCount(size_t count);

} // namespace kalmo::cli
