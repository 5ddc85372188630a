#pragma once

#include "phonedata/StoreTraits.h"

namespace kalmo::cli {

/// The words for one of the two stores.
struct StoreWords
{
    QStringView name;     ///< "phonebook"
    QStringView commands; ///< first word of its commands
};

const StoreWords& wordsOf(phonedata::Store store);

/// Headings and cells of a table of entries.
QStringList entryHeadings(phonedata::Store store);
QStringList entryCells(const phonedata::ClassicEntry& entry, phonedata::Store store);

/// "1 entry", "12 entries".
QString entryCount(size_t count);

} // namespace kalmo::cli
