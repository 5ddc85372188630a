#include "operations/UndoClassic.h"

#include "operations/ClassicLists.h"
#include "phonedata/RawReplies.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::Certainty;
using phonedata::ClassicEntry;
using phonedata::RingtoneJob;
using phonedata::SoundEvent;
using phonedata::SoundSetting;
using phonedata::Store;

namespace {

QString nameOf(const ClassicEntry& entry)
{
    return entry.name + u' ' + entry.number;
}

Store storeOf(RecordedList list)
{
    return list == RecordedList::Providers ? Store::Providers : Store::Phonebook;
}

Outcome unplanned(Cause cause)
{
    return {.state = State::Unchanged, .cause = cause};
}

UndoDiff diffOf(const ListPlan& plan)
{
    UndoDiff diff{.isReordered = plan.isReordered};
    for (const ClassicEntry& entry : plan.diff.add)
        diff.add.append(nameOf(entry));
    for (const phonedata::ListDiff::Change& change : plan.diff.change)
        diff.change.append(nameOf(change.to));
    for (const ClassicEntry& entry : plan.diff.remove)
        diff.remove.append(nameOf(entry));
    return diff;
}

/// "Melodie 4, 6", and "Melodie 77, 6" for a melody without a name.
QString nameOf(const SoundSetting& setting, const phonedata::SoundList& sounds, app::DebugLog& log)
{
    const QString tone = isNamed(setting, sounds) ? phonedata::GetSoundName(setting.soundId, sounds, log)
                                                  : u"Melodie "_s + QString::number(setting.soundId);
    return tone + u", "_s + QString::number(setting.volume);
}

} // namespace

bool isListKnown(const phonedata::StoreContent& content)
{
    return content.certainty == Certainty::Known || content.lacksOnlyMelodies;
}

UndoList::UndoList(const UndoJob& job, Record record)
    : Undo(std::move(record)), m_job{.line = job.line,
                                     .memory = job.memory,
                                     .store = storeOf(this->record().list),
                                     .window = job.window,
                                     .progress = job.progress}
{
    constexpr int mostReadings = 2;
    m_policy.reading = {.readsMelodies = !job.memory.areSoundsKnown, .readings = mostReadings};
    m_policy.isCancellable = job.window == nullptr; // half a list would be worse than a wait
    m_policy.recordCause = RecordCause::Undo;
}

std::optional<QByteArrayList> UndoList::formerReplies() const
{
    const RecordedPart* part = record().part(wordOf(record().list) + u".raw"_s);
    return part ? phonedata::repliesFrom(part->bytes) : std::nullopt;
}

std::optional<UndoDiff> UndoList::compareWithKnown() const
{
    const auto replies = formerReplies();
    if (!replies || !isListKnown(m_job.content()))
        return {};
    return diffOf(planRestoreOfKnown(m_job, *replies));
}

Outcome UndoList::plan()
{
    const auto replies = formerReplies();
    if (!replies)
        return unplanned(Cause::NotPossible);
    m_plan = planRestore(m_job, *replies, m_policy);
    if (m_plan.reading.cause != Cause::None)
        return unplanned(m_plan.reading.cause);
    m_diff = diffOf(m_plan);
    // The codes go back, so names of melodies are not needed.
    return unplanned(isListKnown(m_plan.held) ? Cause::None : Cause::Doubtful);
}

Outcome UndoList::apply()
{
    m_policy.mayUseDoubtful = true; // the program asked
    const ListOutcome result = applyPlan(m_job, m_plan, m_policy);
    m_hasChangedMeanwhile = result.hasChangedMeanwhile;
    return result.outcome;
}

UndoSetting::UndoSetting(const UndoJob& job, Record record) : Undo(std::move(record)), m_job(job) {}

RingtoneJob UndoSetting::ringtoneJob() const
{
    return {m_job.line, m_job.memory, m_job.window, m_job.progress.panel, m_job.progress.cancel};
}

/// The difference to the setting in the memory of this run.
UndoDiff UndoSetting::ringtoneDiff(SoundEvent event, const SoundSetting& former) const
{
    if (m_job.memory.soundSettings[static_cast<size_t>(event)] == former)
        return {};
    return {.change = {nameOf(former, m_job.memory.sounds, m_job.line.context().log)}};
}

std::optional<UndoDiff> UndoSetting::compareWithKnown() const
{
    const auto former = isRingtone() ? phonedata::parseWholeSetting(formerAnswer()) : std::nullopt;
    if (!former || !m_job.memory.soundSettings[static_cast<size_t>(former->first)].isRead())
        return {};
    return ringtoneDiff(former->first, former->second);
}

Outcome UndoSetting::planRingtone()
{
    const auto former = phonedata::parseWholeSetting(formerAnswer());
    if (!former)
        return unplanned(Cause::NotPossible);
    const auto& [event, setting] = *former;
    const Cause cause = readRingtone(ringtoneJob(), event);
    if (cause == Cause::None)
        m_diff = ringtoneDiff(event, setting);
    return unplanned(cause);
}

Outcome UndoSetting::plan()
{
    m_diff = {};
    Outcome planned;
    if (isRingtone()) {
        planned = planRingtone();
    } else {
        const QString former = phonedata::areaCodeText(formerAnswer());
        if (!phonedata::parseAreaCodes(former))
            return unplanned(Cause::NotPossible);
        const auto [now, cause] = readAreaCodes(m_job.line);
        if (now && *now != former)
            m_diff.change.append(former);
        planned = unplanned(cause);
    }
    if (planned.cause == Cause::Doubtful) // there is no value to compare with
        planned.cause = Cause::NotRead;
    return planned;
}

Outcome UndoSetting::apply()
{
    return isRingtone() ? restoreRingtone(ringtoneJob(), formerAnswer()).outcome
                        : restoreAreaCodes(m_job.line, formerAnswer()).outcome;
}

} // namespace kalmo::operations
