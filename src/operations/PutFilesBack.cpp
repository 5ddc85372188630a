#include "operations/PutFilesBack.h"

#include "operations/FolderChanges.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using obex::tObxDirEntry;
using Kind = FileState::Kind;

namespace {

bool holdsSame(const FileState& one, const FileState& other)
{
    return one.kind == other.kind && one.bytes == other.bytes && one.userPerm == other.userPerm &&
           one.groupPerm == other.groupPerm;
}

/// Reads the phone for a plan.
class Planner
{
public:
    explicit Planner(FileAccess& access) : m_access(access) {}

    /// Returns true if the phone says what it holds there. Otherwise the plan has the cause.
    bool add(const FileState& wanted);
    PutBackPlan take() { return std::move(m_plan); }

private:
    /// The entry of a place: outer nothing if the phone does not say, inner nothing if it has none.
    std::optional<std::optional<tObxDirEntry>> entryAt(const PhonePath& path);
    bool comesBackWithFolder(const PhonePath& path) const;
    std::optional<PutBackStep> stepToRemove(const FileState& now);
    bool goes(const PhonePath& path) const;
    bool addMoved(PlaceToPutBack place);
    bool fail(Cause cause);

    FileAccess& m_access;
    PutBackPlan m_plan;
};

bool Planner::comesBackWithFolder(const PhonePath& path) const
{
    return std::any_of(m_plan.places.begin(), m_plan.places.end(), [&](const PlaceToPutBack& place) {
        return place.step == PutBackStep::Add && place.wanted.kind == Kind::Folder &&
               place.wanted.path.isSamePlace(path.folder());
    });
}

bool Planner::goes(const PhonePath& path) const
{
    return std::ranges::any_of(m_plan.places, [&](const PlaceToPutBack& place) {
        return place.step == PutBackStep::Remove && place.wanted.path.isSamePlace(path);
    });
}

/// A folder goes only if all that it holds goes before it: some phones delete it with its content. Nothing if
/// the phone does not list it.
std::optional<PutBackStep> Planner::stepToRemove(const FileState& now)
{
    if (now.kind != Kind::Folder)
        return PutBackStep::Remove;
    const auto held = m_access.look(now.path);
    if (!held)
        return std::nullopt;
    const bool goesWhole = std::ranges::all_of(
        *held, [&](const tObxDirEntry& entry) { return goes(now.path.below(entry.name)); });
    return goesWhole ? PutBackStep::Remove : PutBackStep::Blocked;
}

std::optional<std::optional<tObxDirEntry>> Planner::entryAt(const PhonePath& path)
{
    const std::optional<tObxDirEntry> none;
    if (comesBackWithFolder(path))
        return none;
    const auto listing = m_access.lookIfThere(path.folder());
    if (!listing)
        return std::nullopt;
    const tObxDirEntry* entry = findEntry(*listing, path.name());
    return entry ? std::optional<tObxDirEntry>(*entry) : none;
}

bool Planner::fail(Cause cause)
{
    m_plan.cause = m_access.isStopped() ? Cause::Interrupted : cause;
    return false;
}

bool Planner::addMoved(PlaceToPutBack place)
{
    const auto here = entryAt(place.wanted.path);
    if (!here)
        return fail(m_access.cause());
    const auto there = entryAt(place.wanted.movedTo);
    if (!there)
        return fail(m_access.cause());
    place.now = {.path = place.wanted.movedTo, .kind = Kind::Moved, .movedTo = place.wanted.path};
    const bool isSame = place.wanted.path.isSamePlace(place.wanted.movedTo);
    if (there->has_value() && (!here->has_value() || isSame))
        place.step = PutBackStep::Change;
    else if (!here->has_value())
        place.step = PutBackStep::Blocked;
    else
        place.step = there->has_value() ? PutBackStep::Blocked : PutBackStep::None;
    m_plan.places.push_back(place);
    return true;
}

bool Planner::add(const FileState& wanted)
{
    PlaceToPutBack place{.wanted = wanted};
    if (wanted.kind == Kind::Moved)
        return addMoved(place);
    const auto entry = entryAt(wanted.path);
    if (!entry)
        return fail(m_access.cause());
    FileOutcome outcome;
    if (wanted.kind == Kind::Rights) {
        place.now = {.path = wanted.path, .kind = Kind::Rights};
        if (entry->has_value()) {
            place.now.userPerm = (*entry)->userPerm;
            place.now.groupPerm = (*entry)->groupPerm;
        }
        const bool isEqual = holdsSame(place.now, wanted);
        place.step = !entry->has_value() ? PutBackStep::Blocked
                     : isEqual           ? PutBackStep::None
                                         : PutBackStep::Change;
        m_plan.places.push_back(place);
        return true;
    }
    const auto now = readState(m_access, wanted.path, entry->has_value() ? &**entry : nullptr, outcome);
    if (!now)
        return fail(outcome.cause);
    place.now = *now;
    if (now->kind == Kind::Nothing)
        place.step = wanted.kind == Kind::Nothing ? PutBackStep::None : PutBackStep::Add;
    else if (wanted.kind == Kind::Nothing) {
        const auto step = stepToRemove(*now);
        if (!step)
            return fail(m_access.cause());
        place.step = *step;
    } else if (now->kind != wanted.kind)
        place.step = PutBackStep::Blocked;
    else
        place.step =
            wanted.kind == Kind::Folder || holdsSame(*now, wanted) ? PutBackStep::None : PutBackStep::Change;
    m_plan.places.push_back(place);
    return true;
}

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

/// Deletes the file that is in a recorded file's place. After a failure it is there again with its rights, if
/// the phone allows that.
bool removeOld(FileAccess& access, const FileState& old, FileOutcome& outcome)
{
    if (access.client().Del(old.path.name(), access.progress(), nullptr, false, true))
        return true;
    access.blame(outcome);
    const auto listing = access.look(old.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, old.path.name()) : nullptr;
    if (listing && !entry)
        bringBack(access, old, outcome);
    else if (entry)
        restoreRights(access, old, *entry); // force has changed them
    return false;
}

/// Sends a recorded file. The one that it replaces comes back if the phone does not take it.
bool sendFile(FileAccess& access, const PlaceToPutBack& place, FileOutcome& outcome)
{
    const FileState& wanted = place.wanted;
    const QString name = wanted.path.name();
    const bool isReplaced = place.now.kind == Kind::File;
    if (isReplaced && !removeOld(access, place.now, outcome))
        return false;
    clsMmc::PutReport report;
    outcome.isConfirmed =
        access.client().PutBytes({name, wanted.bytes, wanted.modified}, access.progress(), &report);
    if (!outcome.isConfirmed && !report.stoppedEarly)
        access.blame(outcome);
    const bool isRefused = outcome.cause == Cause::PhoneRefused && !report.mayHoldPart;
    const auto listing = access.look(wanted.path.folder());
    if (listing && access.showsWhole(*listing, {name, wanted.bytes.size(), outcome.isConfirmed}) &&
        !isRefused)
        return true;
    if (outcome.cause == Cause::None)
        outcome.cause = listing ? Cause::Mismatch : access.cause();
    outcome.mayHoldPart =
        listing ? findEntry(*listing, name) != nullptr : !outcome.isConfirmed && report.mayHoldPart;
    outcome.isOldLost = isReplaced && (listing || !outcome.isConfirmed);
    if (listing && isReplaced)
        bringBack(access, place.now, outcome);
    return false;
}

/// Sends a file with its old content, time and rights. Returns true if the listing shows it.
bool putFile(FileAccess& access, const PlaceToPutBack& place, FileOutcome& outcome)
{
    const FileState& wanted = place.wanted;
    if (!enterOrMake(access, wanted.path.folder()))
        return false;
    const bool isSame = place.now.kind == Kind::File && place.now.bytes == wanted.bytes;
    if (!isSame && !sendFile(access, place, outcome))
        return false;
    outcome.cause = Cause::None; // the listing has the last word
    const auto listing = access.look(wanted.path.folder());
    const tObxDirEntry* entry = listing ? findEntry(*listing, wanted.path.name()) : nullptr;
    return entry && restoreRights(access, wanted, *entry) && hasRights(access, wanted);
}

/// Deletes what was not there before the change. After a failure it has its rights again, since force has
/// changed them.
bool removeNew(FileAccess& access, const FileState& now, FileOutcome& outcome)
{
    const QString name = now.path.name();
    if (!access.enter(now.path.folder()))
        return false;
    if (access.client().Del(name, access.progress(), nullptr, false, true))
        return true;
    access.blame(outcome);
    const auto listing = access.look(now.path.folder());
    const clsMmc::Quiet quiet(access.client());
    if (const tObxDirEntry* entry = listing ? findEntry(*listing, name) : nullptr)
        restoreRights(access, now, *entry);
    return false;
}

bool putOne(FileAccess& access, const PlaceToPutBack& place, FileOutcome& outcome)
{
    const FileState& wanted = place.wanted;
    clsMmc& client = access.client();
    switch (wanted.kind) {
    case Kind::File:
        return putFile(access, place, outcome);
    case Kind::Folder:
        return enterOrMake(access, wanted.path);
    case Kind::Nothing:
        return removeNew(access, place.now, outcome);
    case Kind::Moved:
        outcome = moveUnrecorded(access, {.from = wanted.movedTo, .to = wanted.path});
        return outcome.state == State::Done;
    case Kind::Rights:
        return access.enter(wanted.path.folder()) &&
               client.SetAttrib(wanted.path.name(), rightsText(wanted.groupPerm), rightsText(wanted.userPerm),
                                false) &&
               hasRights(access, wanted);
    }
    return false;
}

/// A look at a place after a failure: the phone may hold the wanted state all the same, or the former one.
State stateAfterFailure(FileAccess& access, const PlaceToPutBack& place, const FileOutcome& outcome)
{
    if (outcome.isOldLost)
        return State::Unknown;
    const auto listing = access.look(place.wanted.path.folder());
    if (!listing || place.wanted.kind == Kind::Moved)
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

int PutBackPlan::count(PutBackStep step) const
{
    return static_cast<int>(std::count_if(
        places.begin(), places.end(), [step](const PlaceToPutBack& place) { return place.step == step; }));
}

PutBackPlan planPutBack(FileAccess& access, const Record& record)
{
    const auto states = statesIn(record);
    if (record.list != RecordedList::Files || !states)
        return {.places = {}, .cause = Cause::NotPossible};
    Planner planner(access);
    for (auto state = states->rbegin(); state != states->rend(); ++state) {
        if (!planner.add(*state))
            break;
    }
    return planner.take();
}

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
    const auto id = beginFilesRecord(access, RecordCause::Undo, before, &nothingSent.reason);
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
            outcome.isConfirmed = true;
            outcome.isVerified = true;
        } else {
            if (outcome.cause == Cause::None)
                access.blame(outcome);
            if (!outcome.isOldBack)
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
