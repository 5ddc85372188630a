#pragma once

#include "handset/classic/ClassicEntry.h"
#include "handset/model/Families.h"

#include <optional>

namespace kalmo::handset {

inline constexpr int longestName = 16;
inline constexpr int longestNumber = 32;

enum class StoreKind { Phonebook, Providers };

/// Fault of an entry that came over the wire.
enum class EntryFault {
    None,
    Malformed,    ///< not the form that the command has
    TooLong,      ///< longer than the store's fields
    BadCharacter, ///< a character that the handset can't show or dial
    BadDate,
};

struct ParsedEntry
{
    EntryFault fault = EntryFault::None;
    ClassicEntry entry = {};
};

/// Parses the text after "AT^WSWE=": length-prefixed name and number, in the phonebook the date as well, and
/// with families 2 to 4 the mark and sound of a VIP. Lengths count bytes.
ParsedEntry parseEntry(const QByteArray& argument, StoreKind kind, int family);

/// The text after "^WSRE:" and its blank. An entry without a name starts with ",,".
QByteArray entryText(const ClassicEntry& entry, StoreKind kind, int family);

} // namespace kalmo::handset
