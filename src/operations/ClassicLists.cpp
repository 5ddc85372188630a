#include "operations/ClassicLists.h"

#include "app/Files.h"
#include "operations/Records.h"
#include "operations/SavedLists.h"
#include "phonedata/BackupFiles.h"
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
    phonedata::StoreJob storeJob{job.line, job.memory, job.shown, job.window, job.progress};
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
    const StoreContent& content = job.content();
    result.mismatch = compareWithPlan(job, content, plan);
    if (!result.mismatch.isEmpty())
        outcome.cause = Cause::Mismatch;
    else // a reading that skipped an entry may have skipped one that is there twice
        outcome.cause =
            content.certainty == Certainty::Known || content.lacksOnlyMelodies ? Cause::None : Cause::NotRead;
    outcome.state = outcome.cause == Cause::None ? State::Done : State::Unknown;
    if (outcome.cause != Cause::NotRead)
        outcome.verified = countAsGiven(plan, content.entries);
}

void noteWriting(const ListJob& job, const phonedata::StoreWriting& writing, ListOutcome& result)
{
    Outcome& outcome = result.outcome;
    result.isErased = writing.isErased;
    result.mayHoldDoubles = writing.mayHoldDoubles;
    outcome.state = writing.isUntouched ? State::Unchanged : State::Unknown;
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
        QString error;
        if (!app::writeWholeFile(outcome.savedIn, bytes, &error)) {
            outcome.saveFault = {SaveFault::Kind::System, error};
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
    if (outcome.cause == Cause::None) {
        outcome.cause = renewReading(job, plan, policy);
        result.hasChangedMeanwhile = outcome.cause == Cause::Doubtful;
    }
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
                            static_cast<int>(plan.held.entries.size()), std::move(before), &outcome.saveFault)
            : std::nullopt;
    if (!id) {
        outcome.cause = Cause::NotSaved;
        return result;
    }
    outcome.recordId = *id;
    outcome.savedIn = plan.savedIn.value(0);
    const phonedata::StoreWriting writing = write(job, plan, policy);
    noteWriting(job, writing, result);
    if (writing.isUntouched)
        job.content() = plan.held;
    // A store that did not close in the end holds its entries all the same; reading back tells.
    if (result.isConfirmed() && job.line.port().IsOpen())
        verify(job, plan, policy, result);
    outcome.isRecordOpen = !records.finish(*id, outcome.state, detailsOf(outcome));
    return result;
}

} // namespace kalmo::operations
