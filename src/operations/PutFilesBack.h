#pragma once

#include "operations/FileStates.h"

namespace kalmo::operations {

/// The change that brings a recorded place back.
enum class PutBackStep {
    None,    ///< the phone holds the recorded state already
    Add,     ///< a file or folder that is gone comes back
    Change,  ///< another content or other rights are in its place, or it was moved
    Remove,  ///< there was nothing
    Blocked, ///< something else is in the way, or what was moved is not where it went
};

struct PlaceToPutBack
{
    FileState wanted; ///< as recorded
    PutBackStep step = PutBackStep::None;
    FileState now = {}; ///< takes this step back

    bool operator==(const PlaceToPutBack&) const = default;
};

/// The places of a record in the order in which they are put back: the last change first.
struct PutBackPlan
{
    std::vector<PlaceToPutBack> places;
    Cause cause = Cause::None; ///< of a plan that can't be made; nothing was changed in the phone

    int count(PutBackStep step) const;
};

/// Reads what the phone holds now in all places of a record. The plan can't be made if the phone does not say
/// that, or if the record is not one of files. A folder that the phone does not have holds nothing; any other
/// refusal makes the plan fail.
PutBackPlan planPutBack(FileAccess& access, const Record& record);

/// Puts the files of a plan back, after a record of what the phone holds now: a change like any other, which
/// can be put back too. Contents, rights and times come back as they were; the listing has the last word.
Outcome applyPutBack(FileAccess& access, const PutBackPlan& plan);

} // namespace kalmo::operations
