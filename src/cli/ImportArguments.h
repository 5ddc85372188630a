#pragma once

#include "cli/Invocation.h"
#include "transfer/import/ImportOptions.h"
#include "transfer/import/SourceKind.h"
#include "transfer/import/TextSource.h"

namespace kalmo::cli {

/// Each returns a fault of the options in words, empty for none.

/// An option of the other form of phonebook, or of the other kind of source.
QString faultOfOptions(const Invocation& invocation, transfer::Shape shape, transfer::SourceKind kind);

/// Options for every source: numbers, comparing, letters.
QString takeCommonOptions(const Invocation& invocation, transfer::ImportOptions& options);

/// Options for a text file.
transfer::TextRequest textRequest(const Invocation& invocation, QByteArrayView bytes);
/// Columns, dates and heading of an opened file.
QString takeTextOptions(const Invocation& invocation, transfer::Shape shape, const QStringList& headings,
                        transfer::TextOptions& options);

/// Options for an address book.
QString takeAddressOptions(const Invocation& invocation, transfer::Shape shape,
                           transfer::AddressOptions& options);

} // namespace kalmo::cli
