#pragma once

#include <QString>

namespace kalmo::transfer {

/// The two kinds of sources of an import: their options differ.
enum class SourceKind { Text, AddressBook };

/// An address book for a folder, for the endings .wab and .vcf, and for a file that begins as one of these.
/// Text for any other, also for one that can't be read.
SourceKind sourceKindOf(const QString& path);

} // namespace kalmo::transfer
