#pragma once

#include "phonedata/ClassicStore.h"

namespace kalmo::cli {

using Entries = std::vector<phonedata::ClassicEntry>;

/// Whether a file's ending is one that the entries of a store are saved under: its own, or .json.
bool hasEntryEnding(const QString& path, phonedata::Store store);

/// What a file of that ending holds for the entries.
QByteArray entryFileBytes(const QString& path, const Entries& entries, phonedata::Store store);

/// Reads a file of entries. Unlike the window, which passes over what it doesn't understand, this refuses the
/// whole file: an entry that is overlooked here is erased in the phone. False, with the place and the fault
/// in `error`.
bool readEntryFile(const QString& path, phonedata::Store store, Entries& entries, QString& error);

/// The same for the bytes of a .tel or .prv file, and for those of a .json file.
bool readEntryLines(const QByteArray& bytes, phonedata::Store store, Entries& entries, QString& error);
bool readEntryJson(const QByteArray& bytes, phonedata::Store store, Entries& entries, QString& error);

/// What can't be in an entry at all, empty if there is nothing: line ends, a date that no phone gives. What
/// a phone gave, and would not take again, is no fault, so that every backup can be written.
QString faultOf(const phonedata::ClassicEntry& entry);

/// The entry without what can't be sent: characters that would break the command, a date that is none.
phonedata::ClassicEntry sendable(phonedata::ClassicEntry entry);

/// Whether what entryFileBytes() makes for the path is read as exactly these entries. A line can't hold every
/// text that a phone can.
bool bringsBack(const QString& path, const Entries& entries, phonedata::Store store);

} // namespace kalmo::cli
