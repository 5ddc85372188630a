#pragma once

#include "link/mdlComm.h"
#include "phonedata/PhoneMemory.h"
#include "toolkit/Progress.h"

#include <functional>
#include <optional>

namespace kalmo::phonedata {

/// The two stores of a classic handset, which are reached with the same commands.
enum class Store { Phonebook = 1, Providers = 2 };

/// Everything that the operations on a store need.
struct StoreJob
{
    link::Line& line;
    PhoneMemory& memory;
    toolkit::ListRows*
        list; ///< filled by a read, its rows are selected while they are written; may be absent
    toolkit::BusyWindow* window;                       ///< blocked while the operation runs; may be absent
    toolkit::Progress progress;                        ///< its cancel box is looked at between two entries
    std::function<void(int entries)> onEntryRead = {}; ///< called after each entry with the number so far

    app::Context& context() const { return line.context(); }
    int phoneType() const { return context().sy.PhoneType; }
};

/// Each of these returns true if the phone answered. While a store is open no other command is sent: one
/// that may have been opened by a lost command, or was not closed, is closed ahead of the next command.
bool OpenStore(link::Line& line, Store store, const toolkit::Progress& progress);
bool CloseStore(link::Line& line, const toolkit::Progress& progress);
/// Erases a store and closes it; it closes the store after a failed erase too. Returns true if both
/// succeeded. A list of some size takes minutes. An erase without an answer is not sent again once the user
/// has cancelled. Part of the described interface.
bool EraseStore(link::Line& line, Store store, const toolkit::Progress& progress);

/// The same with the reason for a failure: of the erase, or if that succeeded, of the close.
struct StoreErasing
{
    bool isErased = false;
    bool isClosed = false;
    bool isRefused = false; ///< the phone refused each attempt to erase, so the store holds what it held
    link::RxFailure failure = link::RxFailure::None;
};
StoreErasing eraseAndClose(link::Line& line, Store store, const toolkit::Progress& progress);

/// Closes a store that an earlier run left open in a phone whose family is not known yet, on a line that is
/// neither in text nor in data mode. Families 3 and 4 take no other command meanwhile; the others close a
/// store by the "AT" of the search, and know no such command.
void closeLeftStore(link::Line& line);

/// Outcome of asking for the next entry of an open store.
enum class NextEntry { Entry, End, Failed };

/// Reads the next entry. Sets `doubtful`, and never clears it, if the command had to be repeated, or if the
/// reply has no echo or its lengths don't add up.
NextEntry readNextEntry(link::Line& line, Store store, QByteArray& reply, bool& doubtful);

/// Returns true if the fields of a reply are as long as they say: name, number, and in the phonebook the
/// date. If they are not, the line lost a byte.
bool lengthsAddUp(const QByteArray& reply, Store store);

/// Sends a write command. Returns true if the phone took the entry.
bool writeNextEntry(link::Line& line, const QByteArray& command);

/// More entries than any classic handset holds. A device that always gives one more is no phone.
inline constexpr int mostEntries = 2000;

/// The entry of a reply, nothing for the empty one at the end.
using EntryFromReply = std::function<std::optional<ClassicEntry>(const QByteArray& reply)>;

/// Reads an open store to its end, and adds each entry to the job's list as it comes. Returns the entries in
/// the phone's order, doubtful as in readNextEntry; nothing after a failure, where the user cancelled, and
/// for a store without an end.
std::optional<StoreContent> readEntries(const StoreJob& job, Store store, const EntryFromReply& entryFrom);

/// Entries for a store, and the commands that write them, one for each.
struct StoreEntries
{
    std::vector<ClassicEntry> entries;
    QByteArrayList commands;
};

/// Facts about a write of a whole store.
struct StoreWriting
{
    bool isUntouched = false; ///< the phone refused the erase, so the store holds what it held
    bool isErased = false;    ///< the phone confirmed the erase; it may not have closed the store
    bool isClosed = false;    ///< the phone confirmed the last close
    int planned = 0;          ///< entries
    int sent = 0;             ///< entries whose bytes all went out
    int confirmed = 0;        ///< entries that the phone confirmed
    bool isDoubtful = false;  ///< an answer was lost: an entry may be there twice, or one more than confirmed
    bool mayHoldDoubles = false; ///< an entry was sent again after a lost answer, and confirmed then
    bool isLastUnknown = false;  ///< the last entry that was sent got no answer
    bool wasCancelled = false;   ///< between two entries
    link::RxFailure failure = link::RxFailure::None; ///< of the exchange that ended the write

    bool isDone() const { return isErased && isClosed && confirmed == planned; }
};

/// Sends the write commands of a list's entries into an open store, and shows `status` with the count. Ends
/// after a failure, or where the user cancelled.
void writeEntries(const StoreJob& job, const QByteArrayList& commands, const QString& status,
                  StoreWriting& writing);

/// Notes in `content` the entries that the phone confirmed.
void noteWritten(StoreContent& content, StoreEntries written, const StoreWriting& writing);

/// A reply as the phone would give it for the entry of a write command.
QByteArray replyFor(const QByteArray& writeCommand);

/// Takes a length-prefixed field off the front of a text: digits, a comma, that many characters, a comma. A
/// length that is not true gives what is there.
QString takeField(QString& text);

/// The name of an entry that the phone holds without one.
inline const QString namelessEntry = QStringLiteral("Ohne Name");

/// Takes the name off a reply. `namelessEntry` where the phone sent none, which it does by ",,".
QString takeName(QString& text);

/// A length, a comma and the text itself, as the write commands have names and numbers.
QByteArray lengthPrefixed(const QString& text);

} // namespace kalmo::phonedata
