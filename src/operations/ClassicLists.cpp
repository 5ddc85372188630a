#include "operations/ClassicLists.h"

#include "app/Files.h"
#include "operations/EntryLines.h"
#include "operations/Records.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/ClassicPhonebook.h"
#include "phonedata/RawReplies.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::Certainty;
using phonedata::ClassicEntry;
using phonedata::StoreContent;

namespace {

RecordedList recordedList(phonedata::Store store)
{
    static constexpr std::array<RecordedList, 2> lists = {RecordedList::Phonebook, RecordedList::Providers};
    return phonedata::rowOf(lists, store);
}

bool isFresh(const ListJob& job, qint64 trustedFor)
{
    const StoreContent& content = job.content();
    const qint64 age = content.since.secsTo(job.context().clock.Now()); // below 0 if the clock was set back
    return content.certainty != Certainty::Unknown && age >= 0 && age <= trustedFor && trustedFor > 0;
}

/// Reads the list unless it is known well enough. If that fails, an earlier reading is still worth saving,
/// but no longer certain.
void learnContent(const ListJob& job, const WritePolicy& policy, ListPlan& plan)
{
    identifyPhone(job.line); // while no store is open
    const StoreContent before = job.content();
    if (!isFresh(job, policy.trustedFor)) {
        plan.reading = readList(job, policy.reading);
        if (!plan.reading.isWhole && before.certainty != Certainty::Unknown) {
            job.content() = before;
            job.content().certainty = Certainty::Doubtful;
        }
    }
    plan.held = job.content();
}

QByteArray commandFor(const ListJob& job, const ClassicEntry& entry)
{
    return job.traits().writeCommand(sendable(entry), job.phoneType(), job.memory.sounds);
}

ClassicEntry entryFrom(const ListJob& job, const QByteArray& reply)
{
    return job.traits().entryFromReply(reply, job.phoneType(), job.memory.sounds, job.context().log);
}

/// Counts the entries of the new list that the phone holds already with a melody that has no name. The
/// command of such an entry names another one.
int unnamedMelodies(const ListJob& job, const ListPlan& plan)
{
    int count = 0;
    std::vector<bool> isTaken(plan.given.size(), false);
    for (qsizetype place = 0; job.traits().hasDates && place < plan.held.replies.size(); ++place) {
        const QByteArray& reply = plan.held.replies[place];
        if (!phonedata::hasUnnamedSound(reply, job.phoneType(), job.memory.sounds))
            continue;
        const QByteArray asHeld = job.traits().commandFromReply(reply, job.phoneType());
        for (size_t index = 0; index < plan.given.size(); ++index) {
            if (isTaken[index] || plan.given[index] != plan.held.entries[static_cast<size_t>(place)])
                continue;
            isTaken[index] = true;
            if (plan.toSend.commands[static_cast<qsizetype>(index)] != asHeld)
                ++count;
            break;
        }
    }
    return count;
}

QByteArrayList commandsOf(const ListJob& job, const QByteArrayList& replies)
{
    QByteArrayList commands;
    for (const QByteArray& reply : replies)
        commands.append(job.traits().commandFromReply(reply, job.phoneType()));
    return commands;
}

/// Compares entries as diffLists() does, but the first `exact` wanted ones and all held ones by their codes
/// too: melodies without a name look alike in the list. The tag is a field that no phone knows.
phonedata::ListDiff diffWithCodes(const ListJob& job, const StoreContent& held, const ListPlan& plan)
{
    std::vector<ClassicEntry> now = held.entries;
    std::vector<ClassicEntry> wanted = plan.willHold;
    const QByteArrayList nowCommands = commandsOf(job, held.replies);
    for (qsizetype index = 0; plan.exact > 0 && index < nowCommands.size(); ++index) {
        if (index < plan.exact || !plan.toSend.commands.contains(nowCommands[index]))
            now[static_cast<size_t>(index)].languageTag = QString::fromLatin1(nowCommands[index].toHex());
    }
    for (int index = 0; index < plan.exact; ++index)
        wanted[static_cast<size_t>(index)].languageTag =
            QString::fromLatin1(plan.toSend.commands[index].toHex());
    phonedata::ListDiff diff = phonedata::diffLists(now, wanted);
    for (ClassicEntry& entry : diff.add)
        entry.languageTag.clear();
    for (ClassicEntry& entry : diff.remove)
        entry.languageTag.clear();
    for (phonedata::ListDiff::Change& change : diff.change)
        change.from.languageTag = change.to.languageTag = QString();
    return diff;
}

/// Fills in what follows from the given entries and their commands.
void foresee(const ListJob& job, ListPlan& plan)
{
    plan.willHold.clear();
    for (const QByteArray& command : plan.toSend.commands)
        plan.willHold.push_back(entryFrom(job, phonedata::replyFor(command)));
    plan.diff = diffWithCodes(job, plan.held, plan);
    plan.unnamedMelodies = unnamedMelodies(job, plan);
    const QByteArrayList heldCommands = commandsOf(job, plan.held.replies);
    const bool isSame = plan.exact > 0
                            ? heldCommands == plan.toSend.commands
                            : plan.held.entries == plan.given || plan.held.entries == plan.willHold;
    plan.changesNothing = plan.held.certainty == Certainty::Known && plan.unnamedMelodies == 0 && isSame;
    if (plan.changesNothing && plan.held.entries == plan.willHold)
        return; // nothing has to be written that could turn out otherwise
    plan.objections = objectionsTo(plan.given, plan.willHold, job.store, job.phoneType(), job.memory.sounds);
    std::erase_if(plan.objections, [&](const EntryObjection& objection) { // what the phone gave it can hold
        const size_t index = objection.index;
        return plan.given[index] == plan.toSend.entries[index] &&
               heldCommands.contains(plan.toSend.commands[static_cast<qsizetype>(index)]);
    });
    plan.movedMelodies = movedMelodies(plan.given, plan.willHold, job.phoneType(), job.memory.sounds);
}

void addGiven(const ListJob& job, ListPlan& plan, const std::vector<ClassicEntry>& entries)
{
    for (const ClassicEntry& entry : entries) {
        plan.given.push_back(entry);
        plan.toSend.entries.push_back(sendable(entry));
        plan.toSend.commands.append(commandFor(job, entry));
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

/// Number of entries of the new list that these are exactly.
int countAsGiven(const ListPlan& plan, const std::vector<ClassicEntry>& entries)
{
    const phonedata::ListDiff diff = phonedata::diffLists(entries, plan.given);
    return static_cast<int>(plan.given.size() - diff.add.size() - diff.change.size());
}

Outcome refusal(const ListPlan& plan, Cause cause)
{
    return {.state = State::Unchanged, .cause = cause, .planned = static_cast<int>(plan.given.size())};
}

/// Why nothing may be sent; None if the change may begin.
Cause obstacle(const ListJob& job, const ListPlan& plan, const WritePolicy& policy)
{
    if (!job.line.port().IsOpen())
        return Cause::LineGone;
    if (job.progress.cancelled() && policy.isCancellable)
        return Cause::Interrupted;
    if (!plan.isRead() && !policy.mayLoseUnread)
        return Cause::NotRead;
    return plan.isDoubtful() && !policy.mayUseDoubtful ? Cause::Doubtful : Cause::None;
}

phonedata::StoreWriting write(const ListJob& job, const ListPlan& plan, const WritePolicy& policy)
{
    if (job.onStep)
        job.onStep(ListStep::Writing);
    const auto scratch = job.traits().makeRows();
    phonedata::StoreJob storeJob{job.line, job.memory, job.shown ? *job.shown : *scratch, job.window,
                                 job.progress};
    if (!policy.isCancellable)
        storeJob.progress.cancel = nullptr;
    return phonedata::writeStore(storeJob, job.store, plan.toSend);
}

/// Reads the list again and compares it.
void verify(const ListJob& job, const ListPlan& plan, const WritePolicy& policy, ListOutcome& result)
{
    ListJob reading = job;
    if (!policy.isCancellable)
        reading.progress.cancel = nullptr;
    const StoreContent written = job.content();
    constexpr int mostReadings = 2;
    const ListReading now = readList(reading, {.readings = mostReadings});
    Outcome& outcome = result.outcome;
    if (now.cause != Cause::None) {
        if (!now.isWhole) { // the phone confirmed them, and nothing says otherwise
            job.content() = written;
            job.content().certainty = Certainty::Doubtful;
        }
        outcome.state = State::Unknown;
        outcome.cause = now.cause;
        return;
    }
    result.mismatch = diffWithCodes(job, job.content(), plan);
    outcome.verified = countAsGiven(plan, job.content().entries);
    const bool isRight = result.mismatch.isEmpty();
    outcome.state = isRight ? State::Done : State::Unknown;
    outcome.cause = isRight ? Cause::None : Cause::Mismatch;
}

void noteWriting(const ListJob& job, const phonedata::StoreWriting& writing, ListOutcome& result)
{
    Outcome& outcome = result.outcome;
    result.isErased = writing.isErased;
    result.isConfirmed = writing.isDone();
    outcome.state = State::Unknown;
    outcome.sent = writing.sent;
    outcome.confirmed = writing.confirmed;
    outcome.unknown = writing.isLastUnknown ? 1 : 0;
    if (writing.wasCancelled || job.progress.cancelled())
        outcome.cause = Cause::Interrupted;
    else
        outcome.cause = job.line.port().IsOpen() ? causeOf(writing.failure) : Cause::LineGone;
}

QJsonObject detailsOf(const Outcome& outcome)
{
    QJsonObject details{{u"planned"_s, outcome.planned},
                        {u"sent"_s, outcome.sent},
                        {u"confirmed"_s, outcome.confirmed},
                        {u"unknown"_s, outcome.unknown}};
    if (outcome.verified)
        details.insert(u"verified"_s, *outcome.verified);
    return details;
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

ListPlan planRestore(const ListJob& job, QByteArrayList replies, const WritePolicy& policy)
{
    ListPlan plan;
    learnContent(job, policy, plan);
    addReplies(job, plan, replies);
    foresee(job, plan);
    return plan;
}

bool saveHeld(const ListJob& job, ListPlan& plan, const WritePolicy& policy, Outcome& outcome)
{
    if (!plan.savedIn.isEmpty() || plan.held.entries.empty())
        return true;
    const SavedList held{.kind = savedKind(job.store), .entries = plan.held.entries};
    QStringList endings{job.traits().fileEnding.toString()};
    if (!bringsBack(endings.first(), held))
        endings.append(u".json"_s); // the window reads the other one, as far as it goes
    for (const QString& ending : endings) {
        const QByteArray bytes = savedListBytes(ending, held);
        if (bytes == policy.alreadySaved)
            continue;
        outcome.savedIn = phonedata::phoneCopyPath(job.context(), ending);
        if (!app::writeWholeFile(outcome.savedIn, bytes, &outcome.reason)) {
            plan.savedIn.clear();
            return false;
        }
        plan.savedIn.append(outcome.savedIn);
    }
    return true;
}

ListOutcome applyPlan(const ListJob& job, ListPlan& plan, const WritePolicy& policy)
{
    ListOutcome result{.outcome = refusal(plan, obstacle(job, plan, policy))};
    Outcome& outcome = result.outcome;
    if (outcome.cause != Cause::None)
        return result;
    Records records(job.context(), identifyPhone(job.line));
    const QString part = wordOf(recordedList(job.store)) + u".raw"_s;
    std::vector<RecordedPart> before; // none if the list could not be read: an empty one was read
    if (plan.isRead())
        before.push_back({part, phonedata::repliesBytes(plan.held.replies)});
    const auto id =
        saveHeld(job, plan, policy, outcome)
            ? records.begin(recordedList(job.store), policy.recordCause,
                            static_cast<int>(plan.held.entries.size()), std::move(before), &outcome.reason)
            : std::nullopt;
    if (!id) {
        outcome.cause = Cause::NotSaved;
        return result;
    }
    outcome.recordId = *id;
    outcome.savedIn = plan.savedIn.value(0);
    const phonedata::StoreWriting writing = write(job, plan, policy);
    noteWriting(job, writing, result);
    // A store that did not close in the end holds its entries all the same; reading back tells.
    const bool isWhole = writing.isErased && writing.confirmed == outcome.planned;
    if (isWhole && job.line.port().IsOpen())
        verify(job, plan, policy, result);
    records.finish(*id, outcome.state, detailsOf(outcome));
    return result;
}

ListOutcome appendToList(const ListJob& job, std::vector<ClassicEntry> extra, const WritePolicy& policy)
{
    ListPlan plan = planAppend(job, std::move(extra), policy);
    return applyPlan(job, plan, policy);
}

} // namespace kalmo::operations
