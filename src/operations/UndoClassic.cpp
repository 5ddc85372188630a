#include "operations/UndoClassic.h"

#include "phonedata/RawReplies.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::ClassicEntry;
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

} // namespace

UndoList::UndoList(const UndoJob& job, Record record)
    : Undo(std::move(record)), m_job{.line = job.line,
                                     .memory = job.memory,
                                     .store = storeOf(this->record().list),
                                     .window = job.window,
                                     .progress = job.progress}
{
    constexpr int mostReadings = 2;
    m_policy.reading = {.readsMelodies = true, .readings = mostReadings};
    m_policy.isCancellable = job.window == nullptr; // half a list would be worse than a wait
    m_policy.recordCause = u"undo"_s;
}

Outcome UndoList::plan()
{
    const RecordedPart* part = record().part(wordOf(record().list) + u".raw"_s);
    const auto replies = part ? phonedata::repliesFrom(part->bytes) : std::nullopt;
    if (!replies)
        return unplanned(Cause::NotPossible);
    m_plan = planRestore(m_job, *replies, m_policy);
    if (m_plan.reading.cause != Cause::None)
        return unplanned(m_plan.reading.cause);
    m_diff = {};
    for (const ClassicEntry& entry : m_plan.diff.add)
        m_diff.add.append(nameOf(entry));
    for (const phonedata::ListDiff::Change& change : m_plan.diff.change)
        m_diff.change.append(nameOf(change.to));
    for (const ClassicEntry& entry : m_plan.diff.remove)
        m_diff.remove.append(nameOf(entry));
    return unplanned(m_plan.isDoubtful() ? Cause::Doubtful : Cause::None);
}

Outcome UndoList::apply()
{
    m_policy.mayUseDoubtful = true; // the program asked
    return applyPlan(m_job, m_plan, m_policy).outcome;
}

UndoSetting::UndoSetting(const UndoJob& job, Record record) : Undo(std::move(record)), m_job(job) {}

Outcome UndoSetting::plan()
{
    m_diff = {};
    if (isRingtone()) {
        const auto former = phonedata::parseWholeSetting(formerAnswer());
        if (!former)
            return unplanned(Cause::NotPossible);
        const phonedata::RingtoneJob job{m_job.line, m_job.memory, m_job.window, m_job.progress.panel,
                                         m_job.progress.cancel};
        if (const Cause cause = readRingtones(job); cause != Cause::None)
            return unplanned(cause);
        const auto& [event, setting] = *former;
        if (m_job.memory.soundSettings[static_cast<size_t>(event)] != setting)
            m_diff.change.append(
                phonedata::GetSoundName(setting.soundId, m_job.memory.sounds, m_job.line.context().log) +
                u", "_s + QString::number(setting.volume));
        return unplanned(Cause::None);
    }
    const QString former = phonedata::areaCodeText(formerAnswer());
    if (!phonedata::parseAreaCodes(former))
        return unplanned(Cause::NotPossible);
    const auto [now, cause] = readAreaCodes(m_job.line);
    if (now && *now != former)
        m_diff.change.append(former);
    return unplanned(cause);
}

Outcome UndoSetting::apply()
{
    if (!isRingtone())
        return restoreAreaCodes(m_job.line, formerAnswer()).outcome;
    const phonedata::RingtoneJob job{m_job.line, m_job.memory, m_job.window, m_job.progress.panel,
                                     m_job.progress.cancel};
    return restoreRingtone(job, formerAnswer()).outcome;
}

} // namespace kalmo::operations
