#pragma once

#include "operations/ClassicReading.h"
#include "operations/ListObjections.h"
#include "phonedata/ListDiff.h"

#include <QJsonObject>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

/// The differences between the programs that change a list.
struct WritePolicy
{
    ReadPolicy reading = {};
    qint64 trustedFor = 0;        ///< seconds for which an earlier reading still holds
    bool mayUseDoubtful = false;  ///< the user agreed to write on the strength of a doubtful reading
    bool mayLoseUnread = false;   ///< the user agreed to erase what could not be read
    bool isCancellable = true;    ///< between two entries, which leaves a part of the list in the phone
    QByteArray alreadySaved = {}; ///< bytes of a file on the disk; the same content is not saved once more
    QString recordCause = u"write"_s; ///< key word of the record
};

/// A change of a classic list: the phone's content now, and after the change.
struct ListPlan
{
    ListReading reading;          ///< if `cause` is set, the phone's content is not known from this reading
    phonedata::StoreContent held; ///< as last read
    std::vector<phonedata::ClassicEntry> given;    ///< the whole new list, as wanted
    phonedata::StoreEntries toSend;                ///< the same without what can't be sent
    std::vector<phonedata::ClassicEntry> willHold; ///< the same as the phone will hold it
    phonedata::ListDiff diff;                      ///< from `held` to `willHold`
    std::vector<EntryObjection> objections;
    int movedMelodies = 0;   ///< melodies that this family shifts by one when they are written
    int unnamedMelodies = 0; ///< entries that are kept, with a melody that has no name: it would be replaced
    int exact = 0;           ///< so many entries, the first ones, go back with the phone's own codes
    bool changesNothing = false; ///< the phone is known to hold these entries already, as far as it can
    QStringList
        savedIn; ///< copies of what the phone holds: the window's format, and .json if that lacks a text

    bool isRead() const { return held.certainty != phonedata::Certainty::Unknown; }
    bool isDoubtful() const { return held.certainty == phonedata::Certainty::Doubtful; }
};

/// Plans to make the list hold exactly `given`. Reads the list unless a reading is young enough. The entries
/// are taken by value: they may be those of the job's content, which the reading replaces.
ListPlan planReplace(const ListJob& job, std::vector<phonedata::ClassicEntry> given,
                     const WritePolicy& policy);

/// Plans to add `extra` after the entries of the list, which go back exactly as the phone gave them, with
/// their own codes of melodies.
ListPlan planAppend(const ListJob& job, std::vector<phonedata::ClassicEntry> extra,
                    const WritePolicy& policy);

/// Plans to put back the entries of earlier replies exactly as the phone gave them.
ListPlan planRestore(const ListJob& job, QByteArrayList replies, const WritePolicy& policy);

/// Saves what the phone holds in the folder of backups, unless that is done. Returns false, with the reason
/// and the path in `outcome`, if a file can't be written; then nothing may be erased.
bool saveHeld(const ListJob& job, ListPlan& plan, const WritePolicy& policy, Outcome& outcome);

/// Facts about a finished change.
struct ListOutcome
{
    Outcome outcome = {};
    phonedata::ListDiff mismatch = {}; ///< with Cause::Mismatch, from what the phone holds to what it should
    bool isErased = false;             ///< the phone confirmed the erase
    bool isConfirmed = false;          ///< the phone confirmed everything, the close of the store too
};

/// Carries out a plan: saves and records what the phone holds, erases, writes, reads back and compares.
/// Sends nothing to the store if the plan's reading is not good enough for the policy, if nothing could be
/// saved, or if the user cancelled. `verified` counts the entries that are exactly as given.
ListOutcome applyPlan(const ListJob& job, ListPlan& plan, const WritePolicy& policy);

/// Appends entries in one step: plan and apply.
ListOutcome appendToList(const ListJob& job, std::vector<phonedata::ClassicEntry> extra,
                         const WritePolicy& policy);

} // namespace kalmo::operations
