#pragma once

#include "obex/clsMmc.h"
#include "operations/Records.h"
#include "phonedata/PhoneMemory.h"
#include "phonedata/VcardStore.h"

#include <memory>

namespace kalmo::operations {

/// Everything that putting back a former state makes different, by names for people: entries, contacts, paths
/// of files, events, area codes.
struct UndoDiff
{
    QStringList add = {};
    QStringList change = {};
    QStringList remove = {};
    QStringList blocked = {}; ///< can't be put back: something else is in the place, or it is gone for good
    QStringList stuck = {};   ///< would have to be removed, but the phone gives no reference for it
    QStringList kept = {};    ///< the same, but it may only be missing in an incomplete reading
    bool isReordered = false; ///< the same entries, but in another order

    /// Nothing to do: the phone holds the former state, as far as it can be put back.
    bool isEmpty() const { return add.isEmpty() && change.isEmpty() && remove.isEmpty() && !isReordered; }
    /// Returns true if the phone holds the whole former state.
    bool isHeldAlready() const { return isEmpty() && left() == 0; }
    /// Number of differences that stay.
    qsizetype left() const { return blocked.size() + stuck.size() + kept.size(); }
    bool operator==(const UndoDiff&) const = default;
};

/// Putting back the state that a list of the phone had before a recorded change: plan() reads what the phone
/// holds now, the program shows the difference and asks, apply() changes the phone under a record of its own,
/// with the cause "undo". A session of the data mode lasts from plan() to the end of this object.
class Undo
{
public:
    explicit Undo(Record record) : m_record(std::move(record)) {}
    virtual ~Undo() = default;
    Q_DISABLE_COPY_MOVE(Undo)

    const Record& record() const { return m_record; }
    const UndoDiff& diff() const { return m_diff; }
    /// Returns true if apply() found a list that had changed since plan(), and sent nothing.
    bool hasChangedMeanwhile() const { return m_hasChangedMeanwhile; }

    enum class Doubt {
        Disturbed,  ///< the line was disturbed
        OtherCount, ///< the phone sends more or fewer contacts than it counts
        NoCount,    ///< the phone does not say how many contacts it holds
    };
    /// The reason if plan() returned Cause::Doubtful.
    Doubt doubt() const { return m_doubt; }

    /// The difference to what this run knows of the phone already, without a request to it. Nothing where
    /// that is not known.
    virtual std::optional<UndoDiff> compareWithKnown() const { return {}; }

    /// Cause::None if apply() may follow. Otherwise nothing was changed in the phone. Cause::Doubtful: the
    /// reading may lack something. If diff() then has a difference to it, apply() may follow, but only if the
    /// user wants that.
    virtual Outcome plan() = 0;
    /// `verified` and `confirmed` count what was put back.
    virtual Outcome apply() = 0;

protected:
    UndoDiff m_diff;
    bool m_hasChangedMeanwhile = false;
    Doubt m_doubt = Doubt::Disturbed;

private:
    Record m_record;
};

/// Everything that putting back works with.
struct UndoJob
{
    link::Line& line;
    phonedata::PhoneMemory& memory;
    std::shared_ptr<obex::clsMmc> client;  ///< for lists that are reached in the data mode
    toolkit::BusyWindow* window = nullptr; ///< blocked while the line is in use; may be absent
    toolkit::Progress progress = {};
    const phonedata::ContactReading* contacts = nullptr; ///< the last one, absent if it is out of date
};

/// The latest record of a change that may have changed something; nothing without one.
std::optional<Record> latestChange(const Records& records);

/// Returns true if compareWithKnown() of this record's way back gives a difference. `record` may lack its
/// parts.
bool canCompareWithKnown(const UndoJob& job, const Record& record);

/// The way back for a record. Null if the record holds no former state that can be put back.
std::unique_ptr<Undo> makeUndo(const UndoJob& job, Record record);

} // namespace kalmo::operations
