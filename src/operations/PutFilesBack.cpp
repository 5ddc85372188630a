#include "operations/PutFilesBack.h"

#include "operations/FolderChanges.h"
#include "operations/ReplaceFile.h"

#include <QJsonArray>
#include <QJsonObject>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using obex::tObxDirEntry;
using Kind = FileState::Kind;

namespace {

/// Goes to a folder, which is made where it is gone.
bool enterOrMake(FileAccess& access, const PhonePath& folder)
{
    {
        const clsMmc::Quiet quiet(access.client());
        if (access.enter(folder))
            return true;
    }
    return access.client().CdRoot() && access.client().Cd(folder.forEngine(), true);
}

bool hasRights(FileAccess& access, const FileState& wanted)
{
    const auto listing = access.look(wanted.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, wanted.path.name()) : nullptr;
    return entry && entry->userPerm == wanted.userPerm && entry->groupPerm == wanted.groupPerm;
}

/// Sends a file with its old content, time and rights. Returns true if the listing shows it.
bool putFile(FileAccess& access, const PlaceToPutBack& place, FileOutcome& outcome)
{
    const FileState& wanted = place.wanted;
    if (!enterOrMake(access, wanted.path.folder()))
        return false;
    const bool isSame = place.now.kind == Kind::File && place.now.bytes == wanted.bytes;
    if (!isSame) {
        outcome = replaceFile(access, place.now, wanted, OldFile::Forced);
        if (outcome.state != State::Done)
            return false;
    }
    const auto listing = access.look(wanted.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, wanted.path.name()) : nullptr;
    return entry && restoreRights(access, wanted, *entry) && hasRights(access, wanted);
}

/// Deletes what was not there before the change, and looks if it is gone. After a failure it has its rights
/// again, since force has changed them.
bool removeNew(FileAccess& access, const FileState& now, FileOutcome& outcome)
{
    const QString name = now.path.name();
    if (!access.enter(now.path.folder()))
        return false;
    outcome.isConfirmed = access.client().Del(name, access.progress(), nullptr, false, true);
    if (!outcome.isConfirmed)
        access.blame(outcome);
    const auto listing = access.look(now.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, name) : nullptr;
    if (outcome.isConfirmed && !entry) {
        outcome.isVerified = listing.has_value();
        return true;
    }
    if (outcome.isConfirmed)
        outcome.cause = Cause::Mismatch;
    const clsMmc::Quiet quiet(access.client());
    if (entry)
        restoreRights(access, now, *entry);
    return false;
}

bool putRights(FileAccess& access, const FileState& wanted)
{
    return access.enter(wanted.path.folder()) &&
           access.client().SetAttrib(wanted.path.name(), rightsText(wanted.groupPerm),
                                     rightsText(wanted.userPerm), false) &&
           hasRights(access, wanted);
}

/// Returns true if the place is as it was, as far as the phone says.
bool putOne(FileAccess& access, const PlaceToPutBack& place, FileOutcome& outcome)
{
    const FileState& wanted = place.wanted;
    if (wanted.kind == Kind::Nothing)
        return removeNew(access, place.now, outcome);
    if (wanted.kind == Kind::Moved) {
        outcome = moveUnrecorded(access, {.from = wanted.movedTo, .to = wanted.path});
        return outcome.state == State::Done;
    }
    const bool isBack = wanted.kind == Kind::File     ? putFile(access, place, outcome)
                        : wanted.kind == Kind::Folder ? enterOrMake(access, wanted.path)
                                                      : putRights(access, wanted);
    if (isBack) // a listing shows it, or the client is in that folder
        outcome.isConfirmed = outcome.isVerified = true;
    return isBack;
}

/// A look at a place after a failure: the phone may hold the wanted state all the same, or the former one.
State stateAfterFailure(FileAccess& access, const PlaceToPutBack& place, const FileOutcome& outcome)
{
    if (outcome.isOldLost)
        return State::Unknown;
    const auto listing = access.look(place.wanted.path.folder());
    if (!listing)
        return State::Unknown;
    const tObxDirEntry* entry = findEntry(*listing, place.wanted.path.name());
    const auto shows = [&](const FileState& state, bool isConfirmed) {
        switch (state.kind) {
        case Kind::Nothing:
            return entry == nullptr;
        case Kind::Folder:
            return entry && !entry->isFile();
        case Kind::File:
            return access.showsWhole(*listing, {state.path.name(), state.bytes.size(), isConfirmed}) &&
                   entry->userPerm == state.userPerm && entry->groupPerm == state.groupPerm;
        case Kind::Rights:
            return entry && entry->userPerm == state.userPerm && entry->groupPerm == state.groupPerm;
        case Kind::Moved:
            return false;
        }
        return false;
    };
    const bool isWanted = shows(place.wanted, outcome.isConfirmed);
    const bool isAsBefore = shows(place.now, true); // the phone gave it whole
    if (isWanted == isAsBefore)                     // files of one size
        return State::Unknown;
    return isWanted ? State::Done : State::Unchanged;
}

} // namespace

Outcome applyPutBack(FileAccess& access, const PutBackPlan& plan)
{
    std::vector<const PlaceToPutBack*> places;
    std::vector<FileState> before;
    for (const PlaceToPutBack& place : plan.places) {
        if (place.step == PutBackStep::None || place.step == PutBackStep::Blocked)
            continue;
        places.push_back(&place);
        before.push_back(place.now);
    }
    Outcome nothingSent;
    nothingSent.planned = static_cast<int>(places.size());
    nothingSent.state = places.empty() ? State::Done : State::Unchanged;
    if (places.empty())
        return nothingSent;
    const auto id = beginFilesRecord(access, RecordCause::Undo, before, &nothingSent.saveFault);
    if (!id) {
        nothingSent.cause = Cause::NotSaved;
        return nothingSent;
    }
    std::vector<FileOutcome> results;
    QStringList lost;
    QJsonArray items;
    for (const PlaceToPutBack* place : places) {
        FileOutcome outcome;
        if (!access.goesOn()) {
            outcome.cause = access.isStopped() ? Cause::Interrupted : access.cause();
        } else if (putOne(access, *place, outcome)) {
            outcome.state = State::Done;
        } else {
            if (outcome.cause == Cause::None)
                access.blame(outcome);
            if (!outcome.isOldBack && place->wanted.kind != Kind::Moved) // compared already
                outcome.state = stateAfterFailure(access, *place, outcome);
        }
        if (outcome.isOldLost)
            lost.append(place->wanted.path.shown());
        results.push_back(outcome);
        items.append(
            QJsonObject{{u"path"_s, place->wanted.path.shown()}, {u"state"_s, wordOf(outcome.state)}});
    }
    Outcome sum = sumOf(results);
    sum.recordId = *id;
    sum.lost = lost;
    finishFilesRecord(access, sum, items);
    sum.isRecordOpen = access.isRecordOpen();
    return sum;
}

} // namespace kalmo::operations
