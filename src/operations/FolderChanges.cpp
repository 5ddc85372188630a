#include "operations/FolderChanges.h"

#include "operations/FileStates.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::PhonePath;
using obex::tObxDirEntry;

namespace {

FileObstacle obstacleToMaking(const PhonePath& path)
{
    const FileObstacle obstacle = obstacleAt(path);
    if (obstacle != FileObstacle::None)
        return obstacle;
    const QString name = path.name();
    if (name.isEmpty() || name == u"."_s || name == u".."_s || name.contains(u'/') || name.contains(u'\\'))
        return FileObstacle::BadName;
    return path.canBeMade() ? FileObstacle::None : FileObstacle::OtherName;
}

/// Runs one change between the two halves of its record.
template <typename Change>
FileOutcome recorded(FileAccess& access, RecordCause cause, const std::vector<FileState>& before,
                     const Change& change)
{
    SaveFault fault;
    const auto id = beginFilesRecord(access, cause, before, &fault);
    if (!id)
        return {.cause = Cause::NotSaved, .saveFault = fault};
    const FileOutcome outcome = change();
    Outcome sum = sumOf({outcome});
    sum.recordId = *id;
    QJsonArray items;
    for (const FileState& state : before)
        items.append(QJsonObject{{u"path"_s, state.path.shown()}, {u"state"_s, wordOf(outcome.state)}});
    finishFilesRecord(access, sum, items);
    return outcome;
}

/// Returns true if nothing is to be learnt by a look: the phone said no, or never got the request.
bool isCertain(FileAccess& access, const FileOutcome& outcome)
{
    return outcome.cause == Cause::PhoneRefused || !access.client().wasLastSent();
}

/// Entry of a place, by a look after a failure. Nothing if its folder can't be listed, null if it has none.
std::optional<const tObxDirEntry*> lookAt(FileAccess& access, const PhonePath& path, FolderListing& listing)
{
    const auto found = access.look(path.folder());
    if (!found)
        return std::nullopt;
    listing = *found;
    return findEntry(listing, path.name());
}

State isThereNow(FileAccess& access, const PhonePath& path)
{
    FolderListing listing;
    const auto entry = lookAt(access, path, listing);
    if (!entry)
        return State::Unknown;
    return *entry ? State::Done : State::Unchanged;
}

FileOutcome makeFolders(FileAccess& access, const NewFolder& plan)
{
    FileOutcome outcome;
    const PhonePath& first = plan.missing.front();
    const QStringList names = plan.path.parts().mid(first.parts().size() - 1);
    if (!access.enter(first.folder())) {
        access.blame(outcome);
        return outcome;
    }
    outcome.isConfirmed = access.client().Md(names.join(u'\\'));
    if (outcome.isConfirmed) {
        outcome.state = State::Done;
        outcome.isVerified = true; // the client is in it
        return outcome;
    }
    access.blame(outcome);
    const State all = isThereNow(access, plan.path);
    if (all == State::Done)
        return {.state = State::Done, .isVerified = true};
    outcome.state = isThereNow(access, first);
    outcome.mayHoldPart = outcome.state == State::Done; // folders above it
    if (outcome.mayHoldPart)
        outcome.state = State::Unknown;
    return outcome;
}

bool holds(const tObxDirEntry& entry, Rights wanted)
{
    constexpr int all = obex::MayRead | obex::MayWrite | obex::MayDelete;
    return entry.userPerm == all && entry.groupPerm == (wanted == Rights::ReadOnly ? obex::MayRead : all);
}

FileOutcome setRights(FileAccess& access, const RightsChange& plan, std::optional<tObxDirEntry>& after)
{
    FileOutcome outcome;
    const QString name = plan.before->name;
    obex::clsMmc& client = access.client();
    if (access.enter(plan.path.folder()))
        outcome.isConfirmed = plan.wanted == Rights::ReadOnly ? client.SetPermissionReadOnly(name)
                                                              : client.SetPermissionRWD(name);
    if (outcome.isConfirmed)
        outcome.state = State::Done;
    else
        access.blame(outcome);
    if (!outcome.isConfirmed && isCertain(access, outcome))
        return outcome;
    FolderListing listing;
    const auto entry = lookAt(access, plan.path, listing);
    if (entry && *entry) {
        after = **entry;
        outcome.isVerified = holds(*after, plan.wanted);
    }
    if (outcome.isConfirmed && entry && !outcome.isVerified) {
        outcome.state = State::Unknown;
        outcome.cause = Cause::Mismatch;
    }
    if (outcome.isConfirmed)
        return outcome;
    if (outcome.isVerified)
        return {.state = State::Done, .isVerified = true};
    const bool isAsBefore =
        after && after->userPerm == plan.before->userPerm && after->groupPerm == plan.before->groupPerm;
    outcome.state = isAsBefore ? State::Unchanged : State::Unknown;
    return outcome;
}

} // namespace

NewFolder planNewFolder(const PhonePath& path)
{
    return {.path = path, .obstacle = obstacleToMaking(path)};
}

bool lookBeforeMaking(FileAccess& access, NewFolder& plan)
{
    PhonePath place;
    for (const QString& name : plan.path.parts()) {
        const PhonePath next = place.below(name);
        if (plan.missing.empty()) {
            const auto listing = access.list(place);
            if (!listing)
                return false;
            const tObxDirEntry* entry = findEntry(*listing, name);
            if (entry && entry->isFile()) {
                plan.obstacle = FileObstacle::IsFile;
                return true;
            }
            if (!entry)
                plan.missing.push_back(next);
        } else {
            plan.missing.push_back(next);
        }
        place = next;
    }
    return true;
}

FileOutcome applyNewFolder(FileAccess& access, const NewFolder& plan)
{
    if (plan.missing.empty())
        return {.state = State::Done, .isVerified = true};
    std::vector<FileState> before;
    for (const PhonePath& path : plan.missing)
        before.push_back({.path = path});
    return recorded(access, RecordCause::MakeFolder, before, [&] { return makeFolders(access, plan); });
}

Move planMove(const PhonePath& from, const PhonePath& to)
{
    Move plan{.from = from, .to = to};
    plan.obstacle = obstacleAt(from);
    if (plan.obstacle == FileObstacle::None)
        plan.obstacle = obstacleToMaking(to);
    return plan;
}

bool lookBeforeMoving(FileAccess& access, Move& plan)
{
    const auto source = access.list(plan.from.folder());
    if (!source)
        return false;
    const tObxDirEntry* entry = findEntry(*source, plan.from.name());
    if (!entry) {
        plan.obstacle = FileObstacle::NotThere;
        return true;
    }
    const bool isSameFolder = plan.from.folder().isSamePlace(plan.to.folder());
    const auto target = isSameFolder ? source : access.list(plan.to.folder());
    if (!target)
        return false;
    const tObxDirEntry* there = findEntry(*target, plan.to.name());
    if (there && !plan.from.isSamePlace(plan.to))
        plan.obstacle = FileObstacle::IsThere;
    return true;
}

FileOutcome moveUnrecorded(FileAccess& access, const Move& plan)
{
    FileOutcome outcome;
    outcome.isConfirmed =
        access.client().Rename(plan.from.forEngine(), plan.to.forEngine(), access.progress());
    if (!outcome.isConfirmed)
        access.blame(outcome);
    if (!outcome.isConfirmed && isCertain(access, outcome))
        return outcome;
    const State isThere = isThereNow(access, plan.to);
    const State isStillThere = isThereNow(access, plan.from);
    const bool isSame = plan.from.isSamePlace(plan.to);
    if (outcome.isConfirmed) {
        outcome.state = State::Done;
        outcome.isVerified = isThere == State::Done;
        if (isThere == State::Unchanged) {
            outcome.state = State::Unknown;
            outcome.cause = Cause::Mismatch;
        }
    } else if (isThere == State::Done && isStillThere == State::Unchanged) {
        outcome = {.state = State::Done, .isVerified = true};
    } else if (isSame || isThere != State::Unchanged || isStillThere != State::Done) {
        outcome.state = State::Unknown;
    }
    return outcome;
}

FileOutcome applyMove(FileAccess& access, const Move& plan)
{
    const FileState before{.path = plan.from, .kind = FileState::Kind::Moved, .movedTo = plan.to};
    return recorded(access, RecordCause::MoveFile, {before}, [&] { return moveUnrecorded(access, plan); });
}

RightsChange planRights(const PhonePath& path, Rights wanted)
{
    return {.path = path, .wanted = wanted, .obstacle = obstacleAt(path)};
}

bool lookBeforeRights(FileAccess& access, RightsChange& plan)
{
    const auto listing = access.list(plan.path.folder());
    if (!listing)
        return false;
    const tObxDirEntry* entry = findEntry(*listing, plan.path.name());
    if (entry)
        plan.before = *entry;
    else
        plan.obstacle = FileObstacle::NotThere;
    return true;
}

FileOutcome applyRights(FileAccess& access, const RightsChange& plan, std::optional<tObxDirEntry>& after)
{
    const FileState before{.path = plan.path,
                           .kind = FileState::Kind::Rights,
                           .userPerm = plan.before->userPerm,
                           .groupPerm = plan.before->groupPerm};
    return recorded(access, RecordCause::SetRights, {before}, [&] { return setRights(access, plan, after); });
}

} // namespace kalmo::operations
