#pragma once

#include "operations/SavedLists.h"
#include "phonedata/SoundList.h"

#include <QRegularExpression>

namespace kalmo::operations {

/// The lines of a .tel or .prv file, as telBytes() and prvBytes() of phonedata write them.
QByteArray entryLineBytes(const SavedList& list);

/// Reads such lines. Strict: one faulty line refuses the file, and so does a file without an entry.
bool readEntryLines(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                    SavedListFault& fault);

/// A fault of the texts of one entry: a line end, a date that no phone gives. A text that a phone gave, but
/// would not take again, is none, so that every backup can be written.
FileFault faultOf(const phonedata::ClassicEntry& entry);

/// Matches a character that would break the command that sends it.
const QRegularExpression& unsendable();

/// Returns true for a text of the form "24.12  08:30", an impossible date too.
bool hasDateForm(const QString& date);

/// The entry without all that can't be sent: characters that would break the command, a date that is none. A
/// melody that the phone lacks becomes its first one: phones refuse an entry without the code of its melody,
/// and the store has been erased by then.
phonedata::ClassicEntry sendable(phonedata::ClassicEntry entry, int phoneType,
                                 const phonedata::SoundList& sounds);

} // namespace kalmo::operations
