#include "operations/ClassicPlan.h"

#include "link/PhoneModels.h"
#include "operations/EntryLines.h"
#include "operations/PhoneIdentity.h"
#include "operations/ReadingAge.h"
#include "phonedata/ClassicPhonebook.h"

#include <QHash>

namespace kalmo::operations {

using phonedata::Certainty;
using phonedata::ClassicEntry;
using phonedata::StoreContent;
using phonedata::UnnamedSounds;

namespace {

ClassicEntry entryFrom(const ListJob& job, const QByteArray& reply)
{
    return job.traits().entryFromReply(reply, job.phoneType(), job.memory.sounds, job.context().log);
}

QByteArrayList commandsOf(const ListJob& job, const QByteArrayList& replies)
{
    QByteArrayList commands;
    for (const QByteArray& reply : replies)
        commands.append(job.traits().commandFromReply(reply, job.phoneType()));
    return commands;
}

UnnamedSounds unnamedSounds(const ListJob& job, const QByteArray& reply)
{
    return job.traits().hasDates ? phonedata::unnamedSounds(reply, job.phoneType(), job.memory.sounds)
                                 : UnnamedSounds();
}

bool stillHolds(const ListJob& job, const StoreContent& content)
{
    return content.certainty != Certainty::Unknown && isYoung(content.since, job.context().clock.Now());
}

/// Names the melodies of a list once more: they may have been read after the list.
void nameMelodies(const ListJob& job, StoreContent& content)
{
    const bool hasOwnMelodies = job.traits().hasDates && link::hasRingtoneSettings(job.phoneType());
    if (!hasOwnMelodies || content.replies.size() != std::ssize(content.entries))
        return;
    for (qsizetype place = 0; place < content.replies.size(); ++place)
        content.entries[static_cast<size_t>(place)] = entryFrom(job, content.replies[place]);
    if (content.lacksOnlyMelodies && job.memory.areSoundsKnown)
        content.becomes(std::move(content.entries), Certainty::Known, std::move(content.replies));
}

/// Reads the list unless it is known well enough. If that fails, an earlier reading is still worth saving,
/// but no longer certain.
void learnContent(const ListJob& job, const WritePolicy& policy, ListPlan& plan)
{
    identifyPhone(job.line); // while no store is open
    StoreContent& content = job.content();
    if (!policy.trustsReading || !stillHolds(job, content)) {
        const StoreContent before = content;
        plan.reading = readList(job, policy.reading);
        if (!plan.reading.isWhole && before.certainty != Certainty::Unknown) {
            content = before;
            content.certainty = Certainty::Doubtful;
            content.lacksOnlyMelodies = false;
        }
    }
    nameMelodies(job, content);
    plan.held = content;
}

/// Place of an entry in the new list for one that the phone holds: an equal one, or one with its name and
/// number. -1 without one.
qsizetype placeIn(const std::vector<ClassicEntry>& given, const std::vector<bool>& isTaken,
                  const ClassicEntry& held)
{
    qsizetype found = -1;
    for (size_t index = 0; index < given.size(); ++index) {
        if (isTaken[index] || given[index].name != held.name || given[index].number != held.number)
            continue;
        if (given[index] == held)
            return static_cast<qsizetype>(index);
        if (found < 0)
            found = static_cast<qsizetype>(index);
    }
    return found;
}

/// Returns true if an entry still has the name that stands in for a melody without one.
bool keepsStandIn(const ClassicEntry& given, const ClassicEntry& held, UnnamedSounds unnamed)
{
    return (unnamed.reminder && !given.date.isEmpty() && given.dateSound == held.dateSound) ||
           (unnamed.vip && !given.vip.isEmpty() && given.vipSound == held.vipSound);
}

/// Counts the entries of the new list that the phone holds with a melody that has no name. The command of
/// such an entry names another one.
int unnamedMelodies(const ListJob& job, const ListPlan& plan)
{
    int count = 0;
    std::vector<bool> isTaken(plan.given.size(), false);
    for (qsizetype place = 0; place < plan.held.replies.size(); ++place) {
        const QByteArray& reply = plan.held.replies[place];
        const UnnamedSounds unnamed = unnamedSounds(job, reply);
        if (!unnamed)
            continue;
        const ClassicEntry& held = plan.held.entries[static_cast<size_t>(place)];
        const qsizetype found = placeIn(plan.given, isTaken, held);
        if (found < 0)
            continue;
        isTaken[static_cast<size_t>(found)] = true;
        const bool isExact =
            plan.toSend.commands[found] == job.traits().commandFromReply(reply, job.phoneType());
        if (!isExact && keepsStandIn(plan.given[static_cast<size_t>(found)], held, unnamed))
            ++count;
    }
    return count;
}

/// Counts the entries of the new list that the phone holds without a name.
int namelessEntries(const ListPlan& plan, const QByteArrayList& heldCommands)
{
    int count = 0;
    for (qsizetype place = 0; place < heldCommands.size(); ++place) {
        if (phonedata::isNameless(plan.held.replies[place]) &&
            plan.toSend.commands.contains(heldCommands[place]))
            ++count;
    }
    return count;
}

/// Fills in what follows from the given entries and their commands.
void foresee(const ListJob& job, ListPlan& plan)
{
    plan.willHold.clear();
    for (const QByteArray& command : plan.toSend.commands)
        plan.willHold.push_back(entryFrom(job, phonedata::replyFor(command)));
    plan.diff = compareWithPlan(job, plan.held, plan);
    plan.unnamedMelodies = unnamedMelodies(job, plan);
    const QByteArrayList heldCommands = commandsOf(job, plan.held.replies);
    const bool isSame = plan.exact > 0
                            ? heldCommands == plan.toSend.commands
                            : plan.held.entries == plan.given || plan.held.entries == plan.willHold;
    plan.isReordered = plan.diff.isEmpty() && !isSame;
    const bool areCodesSure = plan.exact > 0 && plan.held.lacksOnlyMelodies;
    const bool isKnown = plan.held.certainty == Certainty::Known || areCodesSure;
    plan.changesNothing = isKnown && plan.unnamedMelodies == 0 && isSame;
    if (plan.changesNothing && plan.held.entries == plan.willHold)
        return; // nothing has to be written that could turn out otherwise
    plan.namelessEntries = namelessEntries(plan, heldCommands);
    plan.objections = objectionsTo(plan.given, plan.willHold, job.store, job.phoneType(), job.memory.sounds);
    std::erase_if(plan.objections, [&](const EntryObjection& objection) { // the phone can hold what it gave
        const size_t index = objection.index;
        return plan.given[index] == plan.toSend.entries[index] &&
               heldCommands.contains(plan.toSend.commands[static_cast<qsizetype>(index)]);
    });
    plan.movedMelodies = movedMelodies(plan.given, plan.willHold, job.phoneType(), job.memory.sounds);
}

void addGiven(const ListJob& job, ListPlan& plan, const std::vector<ClassicEntry>& entries)
{
    for (const ClassicEntry& entry : entries) {
        const ClassicEntry toSend = sendable(entry, job.phoneType(), job.memory.sounds);
        plan.given.push_back(entry);
        plan.toSend.entries.push_back(toSend);
        plan.toSend.commands.append(job.traits().writeCommand(toSend, job.phoneType(), job.memory.sounds));
    }
}

void addReplies(const ListJob& job, ListPlan& plan, const QByteArrayList& replies)
{
    for (const QByteArray& reply : replies) {
        plan.given.push_back(entryFrom(job, reply));
        plan.toSend.entries.push_back(plan.given.back());
        plan.toSend.commands.append(job.traits().commandFromReply(reply, job.phoneType()));
    }
    plan.exact = static_cast<int>(replies.size());
}

} // namespace

ListPlan planReplace(const ListJob& job, std::vector<ClassicEntry> given, const WritePolicy& policy)
{
    ListPlan plan;
    learnContent(job, policy, plan);
    addGiven(job, plan, given);
    foresee(job, plan);
    return plan;
}

ListPlan planAppend(const ListJob& job, std::vector<ClassicEntry> extra, const WritePolicy& policy)
{
    ListPlan plan;
    learnContent(job, policy, plan);
    addReplies(job, plan, plan.held.replies);
    addGiven(job, plan, extra);
    foresee(job, plan);
    return plan;
}

ListPlan planRestore(const ListJob& job, const QByteArrayList& replies, const WritePolicy& policy)
{
    ListPlan plan;
    learnContent(job, policy, plan);
    addReplies(job, plan, replies);
    foresee(job, plan);
    return plan;
}

ListPlan planRestoreOfKnown(const ListJob& job, const QByteArrayList& replies)
{
    ListPlan plan;
    plan.held = job.content();
    addReplies(job, plan, replies);
    foresee(job, plan);
    return plan;
}

phonedata::ListDiff compareWithPlan(const ListJob& job, const StoreContent& content, const ListPlan& plan)
{
    // The tag of a language is a field that no phone knows: here it has the codes of an exact entry.
    const auto tagOf = [](const QByteArray& command) { return QString::fromLatin1(command.toHex()); };
    std::vector<ClassicEntry> now = content.entries;
    std::vector<ClassicEntry> wanted = plan.willHold;
    QHash<QByteArray, int> exact;
    for (int index = 0; index < plan.exact; ++index) {
        const QByteArray& command = plan.toSend.commands[index];
        wanted[static_cast<size_t>(index)].languageTag = tagOf(command);
        ++exact[command];
    }
    for (qsizetype place = 0; plan.exact > 0 && place < content.replies.size(); ++place) {
        const QByteArray& reply = content.replies[place];
        const QByteArray command = job.traits().commandFromReply(reply, job.phoneType());
        const bool isExact = exact.value(command) > 0;
        if (isExact)
            --exact[command];
        if (isExact || unnamedSounds(job, reply))
            now[static_cast<size_t>(place)].languageTag = tagOf(command);
    }
    phonedata::ListDiff diff = phonedata::diffLists(now, wanted);
    for (std::vector<ClassicEntry>* entries : {&diff.add, &diff.remove}) {
        for (ClassicEntry& entry : *entries)
            entry.languageTag.clear();
    }
    for (phonedata::ListDiff::Change& change : diff.change)
        change.from.languageTag = change.to.languageTag = QString();
    return diff;
}

Cause renewReading(const ListJob& job, ListPlan& plan, const WritePolicy& policy)
{
    // Without a reading, or with an old one in its place, the user has agreed to just that.
    if (!plan.isRead() || plan.reading.cause != Cause::None || stillHolds(job, plan.held))
        return Cause::None;
    const ListReading now = readList(job, policy.reading);
    if (now.cause != Cause::None)
        return now.cause;
    if (commandsOf(job, job.content().replies) != commandsOf(job, plan.held.replies))
        return Cause::Doubtful;
    plan.held.since = job.content().since;
    return Cause::None;
}

} // namespace kalmo::operations
