#pragma once

#include "transfer/import/Preview.h"

namespace kalmo::transfer {

/// The rows of a text file, before numbers are rewritten and rows are judged. The first line is a row like
/// any other: a heading falls out by itself, since its number filters down to nothing.
Preview previewOfText(const ImportSource& source, Shape shape, const ImportOptions& options, QDate today,
                      const Advance& advance);

/// The rows of an address book: an entry for each number of a contact (`ReadWabClassic`), or one for each
/// contact (`ReadWabVcard`).
Preview previewOfContacts(const ImportSource& source, Shape shape, const ImportOptions& options,
                          const Advance& advance);

/// The name for the entry of one of a contact's numbers: the beginnings of two fields with a text after
/// each. It is not filtered.
QString ComposeWabName(const WabContact& contact, const SubNumberOptions& options);

} // namespace kalmo::transfer
