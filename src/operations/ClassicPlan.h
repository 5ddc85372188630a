#pragma once

#include "operations/ClassicReading.h"
#include "operations/ListObjections.h"
#include "operations/RecordFile.h"
#include "phonedata/ListDiff.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;

/// The differences between the programs that change a list.
struct WritePolicy
{
    ReadPolicy reading = {};
    bool trustsReading = false;   ///< an earlier reading that still holds is enough for the plan
    bool mayUseDoubtful = false;  ///< the user agreed to write on the strength of a doubtful reading
    bool mayLoseUnread = false;   ///< the user agreed to erase what could not be read
    bool isCancellable = true;    ///< between two entries, which leaves a part of the list in the phone
    QByteArray alreadySaved = {}; ///< bytes of a file on the disk; the same content is not saved once more
    RecordCause recordCause = RecordCause::Write;
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
    bool isReordered = false;                      ///< `diff` is empty, but the order is another one
    std::vector<EntryObjection> objections;
    int movedMelodies = 0;   ///< melodies that this family shifts by one when they are written
    int unnamedMelodies = 0; ///< entries that are kept, with a melody that has no name: it would be replaced
    int namelessEntries = 0; ///< entries that the phone holds without a name: they get "Ohne Name"
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
ListPlan planRestore(const ListJob& job, const QByteArrayList& replies, const WritePolicy& policy);

/// The same without a request, from what this run knows of the list. Only for a comparison.
ListPlan planRestoreOfKnown(const ListJob& job, const QByteArrayList& replies);

/// The differences between a content of the list and the list of a plan. The first `exact` entries are
/// compared by their codes too: melodies without a name look alike in the list.
phonedata::ListDiff compareWithPlan(const ListJob& job, const phonedata::StoreContent& content,
                                    const ListPlan& plan);

/// Reads the list again if the plan's reading no longer holds. Returns Cause::None if the plan does,
/// Cause::Doubtful if the list has changed since, or the reason why it could not be read.
Cause renewReading(const ListJob& job, ListPlan& plan, const WritePolicy& policy);

} // namespace kalmo::operations
