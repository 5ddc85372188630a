#include "operations/ReplaceFile.h"

namespace kalmo::operations {

using obex::clsMmc;
using obex::tObxDirEntry;
using Kind = FileState::Kind;

namespace {

/// Puts a file back that was deleted for another one which the phone did not take. A part of that one is
/// deleted first. Shows no box. The place is Unchanged if the phone lists the file as it was; otherwise it is
/// Unknown, and the old file counts as lost.
void bringBack(FileAccess& access, const FileState& old, FileOutcome& outcome)
{
    const QString name = old.path.name();
    outcome.isOldLost = true;
    outcome.state = State::Unknown;
    if (!access.canSend())
        return;
    const clsMmc::Quiet quiet(access.client());
    if (!access.enter(old.path.folder()) || (outcome.mayHoldPart && !access.client().Del(name, {})))
        return;
    const bool isConfirmed = access.client().PutBytes({name, old.bytes, old.modified}, {});
    const auto listing = access.look(old.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, name) : nullptr;
    outcome.mayHoldPart = !listing || entry;
    if (!entry || !access.showsWhole(*listing, {name, old.bytes.size(), isConfirmed}) ||
        !restoreRights(access, old, *entry))
        return;
    outcome.isOldLost = false;
    outcome.isOldBack = true;
    outcome.mayHoldPart = false;
    outcome.state = State::Unchanged;
}

/// Returns true if the old file is gone, and the new one can be sent.
bool removeOld(FileAccess& access, const FileState& old, OldFile deletion, FileOutcome& outcome)
{
    const bool isForced = deletion == OldFile::Forced;
    if (access.client().Del(old.path.name(), access.progress(), nullptr, false, isForced))
        return true;
    access.blame(outcome);
    const bool isThere = !access.client().wasLastSent() || outcome.cause == Cause::PhoneRefused;
    if (isThere && !isForced)
        return false;
    const auto listing = access.look(old.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, old.path.name()) : nullptr;
    const clsMmc::Quiet quiet(access.client());
    if (listing && !entry)
        bringBack(access, old, outcome);
    else if (!entry || !restoreRights(access, old, *entry)) // force has changed them
        outcome.state = State::Unknown;
    return false;
}

/// Compares with the listing.
void judge(FileAccess& access, const FileState& old, const FileState& wanted, const clsMmc::PutReport& report,
           FileOutcome& outcome)
{
    const QString name = wanted.path.name();
    const bool isReplaced = old.kind == Kind::File;
    const auto listing = access.look(wanted.path.folder());
    const bool isRefused = outcome.cause == Cause::PhoneRefused && !report.mayHoldPart;
    if (listing && !isRefused &&
        access.showsWhole(*listing, {name, wanted.bytes.size(), outcome.isConfirmed})) {
        outcome = {.state = State::Done, .isConfirmed = outcome.isConfirmed, .isVerified = true};
        return;
    }
    if (outcome.cause == Cause::None && listing)
        outcome.cause = Cause::Mismatch;
    else if (outcome.cause == Cause::None)
        access.blame(outcome);
    if (!listing) {
        if (access.isStopped())
            outcome.cause = Cause::Interrupted;
        const bool mayBeThere = outcome.isConfirmed || report.mayHoldPart;
        outcome.state = mayBeThere || isReplaced ? State::Unknown : State::Unchanged;
        outcome.mayHoldPart = report.mayHoldPart && !outcome.isConfirmed;
        outcome.isOldLost = isReplaced && !outcome.isConfirmed;
        return;
    }
    outcome.mayHoldPart = findEntry(*listing, name);
    outcome.state = outcome.mayHoldPart ? State::Unknown : State::Unchanged;
    if (isReplaced)
        bringBack(access, old, outcome);
}

} // namespace

FileOutcome replaceFile(FileAccess& access, const FileState& old, const FileState& wanted, OldFile deletion)
{
    FileOutcome outcome;
    if (!access.enter(wanted.path.folder())) {
        access.blame(outcome);
        return outcome;
    }
    if (old.kind == Kind::File && !removeOld(access, old, deletion, outcome))
        return outcome;
    clsMmc::PutReport report;
    outcome.isConfirmed = access.client().PutBytes({wanted.path.name(), wanted.bytes, wanted.modified},
                                                   access.progress(), &report);
    if (!outcome.isConfirmed && !report.stoppedEarly)
        access.blame(outcome);
    judge(access, old, wanted, report, outcome);
    return outcome;
}

} // namespace kalmo::operations
