// The plan of putting files back: a comparison of each recorded place with the phone.

#include "operations/PutFilesBack.h"

#include <algorithm>

namespace kalmo::operations {

using obex::PhonePath;
using obex::tObxDirEntry;
using Kind = FileState::Kind;

namespace {

bool holdsSame(const FileState& one, const FileState& other)
{
    return one.kind == other.kind && one.bytes == other.bytes && one.userPerm == other.userPerm &&
           one.groupPerm == other.groupPerm;
}

/// The phone's answer about a place.
struct Place
{
    bool isKnown = false;                   ///< the phone says what it holds there
    std::optional<tObxDirEntry> entry = {}; ///< nothing where it holds nothing
};

/// Reads the phone for a plan.
class Planner
{
public:
    explicit Planner(FileAccess& access) : m_access(access) {}

    /// Returns true if the phone says what it holds there. Otherwise the plan has the cause.
    bool add(const FileState& wanted);
    PutBackPlan take() { return std::move(m_plan); }

private:
    Place placeAt(const PhonePath& path);
    bool comesBackWithFolder(const PhonePath& path) const;
    std::optional<PutBackStep> stepToRemove(const FileState& now);
    bool goes(const PhonePath& path) const;
    bool addMoved(PlaceToPutBack place);
    void addRights(PlaceToPutBack place, const std::optional<tObxDirEntry>& entry);
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

Place Planner::placeAt(const PhonePath& path)
{
    if (comesBackWithFolder(path))
        return {.isKnown = true};
    const auto listing = m_access.lookIfThere(path.folder());
    if (!listing)
        return {};
    const tObxDirEntry* entry = findEntry(*listing, path.name());
    return {.isKnown = true, .entry = entry ? std::optional(*entry) : std::nullopt};
}

bool Planner::fail(Cause cause)
{
    m_plan.cause = m_access.isStopped() ? Cause::Interrupted : cause;
    return false;
}

bool Planner::addMoved(PlaceToPutBack place)
{
    const Place here = placeAt(place.wanted.path);
    if (!here.isKnown)
        return fail(m_access.cause());
    const Place there = placeAt(place.wanted.movedTo);
    if (!there.isKnown)
        return fail(m_access.cause());
    place.now = {.path = place.wanted.movedTo, .kind = Kind::Moved, .movedTo = place.wanted.path};
    const bool isSame = place.wanted.path.isSamePlace(place.wanted.movedTo);
    if (there.entry && (!here.entry || isSame))
        place.step = PutBackStep::Change;
    else if (!here.entry)
        place.step = PutBackStep::Blocked;
    else
        place.step = there.entry ? PutBackStep::Blocked : PutBackStep::None;
    m_plan.places.push_back(place);
    return true;
}

void Planner::addRights(PlaceToPutBack place, const std::optional<tObxDirEntry>& entry)
{
    place.now = {.path = place.wanted.path, .kind = Kind::Rights};
    if (entry) {
        place.now.userPerm = entry->userPerm;
        place.now.groupPerm = entry->groupPerm;
    }
    place.step = !entry                               ? PutBackStep::Blocked
                 : holdsSame(place.now, place.wanted) ? PutBackStep::None
                                                      : PutBackStep::Change;
    m_plan.places.push_back(place);
}

bool Planner::add(const FileState& wanted)
{
    PlaceToPutBack place{.wanted = wanted};
    if (wanted.kind == Kind::Moved)
        return addMoved(place);
    const Place here = placeAt(wanted.path);
    if (!here.isKnown)
        return fail(m_access.cause());
    if (wanted.kind == Kind::Rights) {
        addRights(place, here.entry);
        return true;
    }
    FileOutcome outcome;
    const auto now = readState(m_access, wanted.path, here.entry ? &*here.entry : nullptr, outcome);
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

} // namespace kalmo::operations
