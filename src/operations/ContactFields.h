#pragma once

#include "operations/SavedListFault.h"
#include "phonedata/VcfEntry.h"

#include <span>

namespace kalmo::operations {

/// A field of a contact.
struct ContactField
{
    QStringView key; ///< in JSON
    QString phonedata::tVcfEntry::*text;
    qsizetype longest; ///< characters that a phone holds, `anyLength` for no limit
    bool isNumber;
};

inline constexpr qsizetype anyLength = 0;

/// All fields, in the order of the window's list, which is that of the .csv file as well. The LUID is the
/// last.
std::span<const ContactField> contactFields();

/// A fault of the texts of a contact, with the field's key: a line end, a NUL, a letter that no phone has.
SavedListFault faultOf(const phonedata::tVcfEntry& contact);

/// "Hans Müller", or another field that tells a contact from others.
QString contactName(const phonedata::tVcfEntry& contact);

/// Returns true if nothing but a LUID is in a contact; phones have such entries.
bool holdsNothing(const phonedata::tVcfEntry& contact);

/// The contact with two digits for the day of its birthday. Phones may have one, and what displays a birthday
/// counts on two.
phonedata::tVcfEntry withLongDay(phonedata::tVcfEntry contact);

} // namespace kalmo::operations
