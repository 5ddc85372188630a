#pragma once

#include "operations/SaveFault.h"

#include <QStringList>

#include <optional>

namespace kalmo::operations {

/// State of one item (contact, file, setting) or of a whole list after an operation.
enum class State {
    Done,      ///< the phone confirmed the change, and it was read back where the operation reads back
    Unchanged, ///< the phone holds what it held before
    Unknown,   ///< neither is confirmed
};

/// Reason for an operation that did not do everything.
enum class Cause {
    None,
    Interrupted,  ///< by Ctrl-C or a cancel box
    PhoneRefused, ///< the phone answered with an error
    NoAnswer,
    LineGone, ///< the port is closed
    NotSaved, ///< the record or a backup could not be written, so nothing was sent
    NotRead,  ///< the phone's content could not be read
    Doubtful, ///< the reading may lack entries, and the policy does not allow its use
    NoRoom,
    Mismatch,    ///< reading back gave something else
    NotPossible, ///< this phone, or this family, can't hold it
};

/// Facts about a finished operation. "Sent" means that all bytes went out, "confirmed" that the phone said
/// yes.
struct Outcome
{
    State state = State::Unchanged;
    Cause cause = Cause::None;
    int planned = 0;   ///< items that were to be changed
    int sent = 0;      ///< of those, items whose bytes all went out
    int confirmed = 0; ///< of those, items that the phone confirmed
    int unknown = 0;   ///< items that were sent and got no answer
    std::optional<int> verified =
        {};                    ///< items that reading back found as wanted; nothing where it did not happen
    QString savedIn = {};      ///< path of the automatic backup, empty without one
    QString recordId = {};     ///< id of the record, empty if nothing was sent
    bool isRecordOpen = false; ///< the record could not be completed: it keeps the state unknown
    QStringList lost = {};     ///< files that are gone from the phone; the record holds them
    SaveFault saveFault = {};  ///< the reason for Cause::NotSaved, where it is known

    bool isDone() const { return state == State::Done; }
    /// Returns true if the phone confirmed a change that could not be read back to compare it.
    bool isUncompared() const { return isDone() && sent > 0 && !verified; }
};

/// "done", "unchanged" or "unknown", as JSON and records have it.
QString wordOf(State state);
/// The state of such a word; Unknown for any other.
State stateOf(const QString& word);

} // namespace kalmo::operations
