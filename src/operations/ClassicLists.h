#pragma once

#include "operations/ClassicPlan.h"

namespace kalmo::operations {

/// Saves what the phone holds in the folder of backups, unless that is done. Returns false, with the reason
/// and the path in `outcome`, if a file can't be written; then nothing may be erased.
bool saveHeld(const ListJob& job, ListPlan& plan, const WritePolicy& policy, Outcome& outcome);

/// Facts about a finished change.
struct ListOutcome
{
    Outcome outcome = {};
    phonedata::ListDiff mismatch = {}; ///< with Cause::Mismatch, from what the phone holds to what it should
    bool isErased = false;             ///< the phone confirmed the erase
    bool mayHoldDoubles = false;       ///< an entry was sent again after a lost answer
    bool hasChangedMeanwhile = false;  ///< with Cause::Doubtful: the list is not as the plan has it

    /// Returns true if nothing was sent to the store.
    bool sentNothing() const { return outcome.recordId.isEmpty(); }
    /// Returns true if the phone confirmed each entry. The end of the store may be unconfirmed.
    bool isConfirmed() const { return isErased && outcome.confirmed == outcome.planned; }
};

/// Carries out a plan: saves and records what the phone holds, erases, writes, reads back and compares.
/// Sends nothing to the store if the plan's reading is not good enough for the policy, if the list has
/// changed since, if nothing could be saved, or if the user cancelled. `verified` counts the entries that are
/// exactly as given.
ListOutcome applyPlan(const ListJob& job, ListPlan& plan, const WritePolicy& policy);

} // namespace kalmo::operations
