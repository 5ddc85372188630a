#pragma once

#include "transfer/import/WabContact.h"

#include <QByteArray>

namespace kalmo::transfer {

/// Returns true if bytes begin as a Windows Address Book does, of today's layout or of the old one.
bool isWabFile(QByteArrayView bytes);

enum class WabFault { None, NotAnAddressBook, OldLayout, TooManyContacts, Damaged };

struct WabBook
{
    WabFault fault = WabFault::None;
    std::vector<WabContact> contacts = {};
    int damagedRecords = 0; ///< that the book names, or whose bytes are there, and that can't be read
};

/// Reads a whole Windows Address Book (.wab): a header with the places of six tables, the first of them an
/// index of the records; a record is a list of MAPI properties. The layout follows public descriptions
/// (PRONOM fmt/1255 and readers of other mail programs). Strings of the 8-bit type are taken for
/// Windows-1252. A record that is broken costs that contact alone. A book that has lost all its contacts is
/// Damaged. Time and memory stay in proportion to the file, whatever its bytes.
WabBook readWabFile(QByteArrayView bytes);

} // namespace kalmo::transfer
