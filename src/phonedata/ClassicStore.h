#pragma once

#include "link/mdlComm.h"
#include "phonedata/PhoneMemory.h"
#include "toolkit/Progress.h"

#include <functional>

namespace kalmo::phonedata {

/// The two stores of a classic handset, which are reached with the same commands.
enum class Store { Phonebook = 1, Providers = 2 };

/// What the operations on a store work with.
struct StoreJob
{
    link::Line& line;
    PhoneMemory& memory;
    toolkit::ListRows& list;     ///< filled by a read, sent by a write
    toolkit::BusyWindow* window; ///< blocked while the operation runs; may be absent
    toolkit::Progress progress;  ///< its cancel box is looked at between two entries

    app::Context& context() const { return line.context(); }
    int phoneType() const { return context().sy.PhoneType; }
};

/// Each of these is true if the phone answered. While a store is open no other command is sent.
bool OpenStore(link::Line& line, Store store, const toolkit::Progress& progress);
bool CloseStore(link::Line& line, const toolkit::Progress& progress);
/// Erases a store and closes it, which is tried after a failed erase too; true if both succeeded. A list of
/// some size takes minutes.
bool EraseStore(link::Line& line, Store store, const toolkit::Progress& progress);

/// Outcome of asking for the next entry of an open store.
enum class NextEntry { Entry, End, Failed };

/// Reads the next entry. `doubtful` is set, and never cleared, if the command had to be repeated, or if the
/// reply has no echo or its lengths don't add up.
NextEntry readNextEntry(link::Line& line, Store store, QByteArray& reply, bool& doubtful);

/// Whether the fields of a reply are as long as they say: name, number, and in the phonebook the date. If
/// not, a byte got lost on the line.
bool lengthsAddUp(const QByteArray& reply, Store store);

/// Sends a write command; true if the phone took the entry.
bool writeNextEntry(link::Line& line, const QByteArray& command);

/// Reads an open store to its end and hands on every reply, the empty one at the end too. False after a
/// failure or where the user cancelled. `doubtful` as in readNextEntry.
bool readEntries(const StoreJob& job, Store store, const std::function<void(const QByteArray& reply)>& take,
                 bool& doubtful);

/// Sends the write commands of a list's entries into an open store, and shows `status` with the count. Gives
/// how many the phone took: fewer than there are after a failure, or where the user cancelled. `doubtful` is
/// set if a command had to be repeated, which the phone may have taken twice.
int writeEntries(const StoreJob& job, const QByteArrayList& commands, const QString& status, bool& doubtful);

/// Takes a length-prefixed field off the front of a text: digits, a comma, that many characters, a comma. A
/// length that is not true gives what is there.
QString takeField(QString& text);

/// Takes the name off a reply. "Ohne Name" where the phone sent none, which it does by ",,".
QString takeName(QString& text);

/// A length, a comma and the text itself, as the write commands have names and numbers.
QByteArray lengthPrefixed(const QString& text);

} // namespace kalmo::phonedata
