#include "operations/PhoneSettings.h"

#include "app/CodePage.h"
#include "link/mdlStatus.h"
#include "operations/Asking.h"
#include "operations/Records.h"

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using phonedata::AreaCodes;
using phonedata::RingtoneJob;
using phonedata::SoundEvent;
using phonedata::SoundSetting;

namespace {

Asked<QByteArray> askForAreaCodes(link::Line& line)
{
    return askUntilSure(line, [&line]() -> std::optional<QByteArray> {
        QByteArray answer;
        return phonedata::askAreaCodes(line, answer) ? std::optional(answer) : std::nullopt;
    });
}

Asked<QByteArray> askForSetting(const RingtoneJob& job, SoundEvent event)
{
    return askUntilSure(job.line, [&]() -> std::optional<QByteArray> {
        job.line.pause(phonedata::pauseBetweenSettings);
        QByteArray answer;
        return phonedata::askSetting(job.line, event, answer) ? std::optional(answer) : std::nullopt;
    });
}

/// Why a reading failed, also if the last exchange succeeded.
Cause readingFailure(const link::Line& line)
{
    const Cause cause = causeOf(line.lastFailure());
    return cause == Cause::None ? Cause::NotRead : cause;
}

/// Counts one setting that was sent: confirmed, refused, or without an answer.
void noteSent(const link::Line& line, bool isTaken, Outcome& outcome)
{
    outcome.sent = 1;
    outcome.confirmed = isTaken ? 1 : 0;
    outcome.unknown = !isTaken && line.lostAnswers() ? 1 : 0;
    outcome.cause = isTaken ? Cause::None : causeOf(line.lastFailure());
    outcome.state = outcome.unknown > 0 || isTaken ? State::Unknown : State::Unchanged;
}

/// Compares the setting that was read back with the wanted and the former one.
template <typename Value>
void noteReadBack(const Asked<Value>& now, const Value& wanted, const Value& before,
                  SettingOutcome<Value>& result)
{
    Outcome& outcome = result.outcome;
    result.now = now.value;
    if (!now.value) {
        if (outcome.cause == Cause::None)
            outcome.cause = now.cause;
        return;
    }
    outcome.verified = *now.value == wanted ? 1 : 0;
    if (*now.value == wanted && outcome.cause != Cause::PhoneRefused) {
        outcome.state = State::Done;
        outcome.cause = Cause::None;
        return;
    }
    outcome.state = *now.value == before ? State::Unchanged : State::Unknown;
    if (outcome.cause == Cause::None)
        outcome.cause = Cause::Mismatch;
}

/// Records the former setting, sends the new one, and closes the record after `change` filled in the outcome.
void changeRecorded(link::Line& line, RecordedList list, RecordCause recordCause, const RecordedPart& before,
                    Outcome& outcome, const std::function<void()>& change)
{
    Records records(line.context(), identifyPhone(line));
    const auto id = records.begin(list, recordCause, 1, {before}, &outcome.saveFault);
    if (!id) {
        outcome.cause = Cause::NotSaved;
        return;
    }
    outcome.recordId = *id;
    change();
    outcome.isRecordOpen =
        !records.finish(*id, outcome.state, {{u"sent"_s, outcome.sent}, {u"confirmed"_s, outcome.confirmed}});
}

Asked<SoundSetting> parsed(SoundEvent event, const Asked<QByteArray>& asked)
{
    if (!asked.value)
        return {std::nullopt, asked.cause};
    return {phonedata::parseSetting(event, *asked.value), Cause::None};
}

/// Reads the setting of an event after it was sent. With `report` all settings are read for it. One answer
/// alone may lack a byte, so one that differs from the wanted setting is asked for again.
Asked<SoundSetting> readBack(const RingtoneJob& job, SoundEvent event, const SoundSetting& wanted,
                             const phonedata::SettingRead& report)
{
    SoundSetting& known = job.memory.soundSettings[static_cast<size_t>(event)];
    if (!report)
        job.line.pause(phonedata::pauseAheadOfSettings);
    else if (!phonedata::ReadSoundSettings(job, report))
        return {std::nullopt, readingFailure(job.line)};
    else if (known == wanted)
        return {known, Cause::None};
    const Asked<SoundSetting> now = parsed(event, askForSetting(job, event));
    known = now.value.value_or(SoundSetting());
    return now;
}

/// Reads the setting of one event into the job's memory.
Cause learnSetting(const RingtoneJob& job, SoundEvent event)
{
    const Asked<QByteArray> asked = askForSetting(job, event);
    if (!asked.value)
        return asked.cause;
    const auto setting = phonedata::parseWholeSetting(*asked.value);
    if (!setting || setting->first != event)
        return Cause::Doubtful;
    job.memory.soundSettings[static_cast<size_t>(event)] = setting->second;
    return Cause::None;
}

/// The phone shows no seconds, and may be a minute late.
bool areSameTime(const QDateTime& one, const QDateTime& other)
{
    constexpr qint64 tolerance = 120; // seconds
    return std::abs(one.secsTo(other)) <= tolerance;
}

/// Reads the clock after it was sent. One answer alone may lack a digit, so a time that differs from the PC's
/// is asked for again.
Asked<QDateTime> readClockBack(link::Line& line)
{
    const auto ask = [&line]() -> std::optional<QDateTime> {
        QDateTime time;
        return link::GetPhoneTime(line, time) ? std::optional(time) : std::nullopt;
    };
    const auto first = ask();
    if (!first)
        return {std::nullopt, causeOf(line.lastFailure())};
    if (areSameTime(*first, line.context().clock.Now()))
        return {first, Cause::None};
    return askUntilSure(line, ask, areSameTime);
}

SettingOutcome<SoundSetting> changeRingtone(const RingtoneJob& job, SoundEvent event, const QByteArray& code,
                                            int volume, RecordCause recordCause,
                                            const phonedata::SettingRead& report)
{
    SettingOutcome<SoundSetting> result{.outcome = {.planned = 1}};
    Outcome& outcome = result.outcome;
    job.line.pause(phonedata::pauseAheadOfSettings);
    const Asked<QByteArray> before = askForSetting(job, event);
    if (!before.value) {
        outcome.cause = before.cause;
        return result;
    }
    const RecordedPart part{u"ringtones.raw"_s, *before.value};
    changeRecorded(job.line, RecordedList::Ringtones, recordCause, part, outcome, [&] {
        job.line.pause(phonedata::pauseBetweenSettings);
        noteSent(job.line, phonedata::SetSoundCode(job, event, code, volume), outcome);
        job.line.pause(phonedata::pauseAfterSetting);
        const SoundSetting wanted{code.toInt(), volume};
        noteReadBack(readBack(job, event, wanted, report), wanted,
                     phonedata::parseSetting(event, *before.value), result);
    });
    return result;
}

} // namespace

std::pair<std::optional<QString>, Cause> readAreaCodes(link::Line& line)
{
    const Asked<QByteArray> asked = askForAreaCodes(line);
    if (!asked.value)
        return {std::nullopt, asked.cause};
    return {phonedata::areaCodeText(*asked.value), Cause::None};
}

SettingOutcome<QString> setAreaCodes(link::Line& line, const AreaCodes& codes, RecordCause recordCause)
{
    SettingOutcome<QString> result{.outcome = {.planned = 1}};
    Outcome& outcome = result.outcome;
    const Asked<QByteArray> before = askForAreaCodes(line);
    if (!before.value) {
        outcome.cause = before.cause;
        return result;
    }
    const QString wanted = QStringList(codes.begin(), codes.end()).join(u',');
    const RecordedPart part{u"areacodes.raw"_s, *before.value};
    changeRecorded(line, RecordedList::AreaCodes, recordCause, part, outcome, [&] {
        noteSent(line, phonedata::sendAreaCodes(line, codes), outcome);
        const auto [now, cause] = readAreaCodes(line);
        noteReadBack({now, cause}, wanted, phonedata::areaCodeText(*before.value), result);
    });
    return result;
}

SettingOutcome<QString> restoreAreaCodes(link::Line& line, const QByteArray& answer)
{
    const auto codes = phonedata::parseAreaCodes(phonedata::areaCodeText(answer));
    if (!codes)
        return {.outcome = {.cause = Cause::NotPossible, .planned = 1}, .now = {}};
    return setAreaCodes(line, *codes, RecordCause::Undo);
}

Cause readMelodies(const RingtoneJob& job)
{
    const auto melodies = askUntilSure(job.line, [&job]() -> std::optional<std::vector<phonedata::Melody>> {
        const auto rows = phonedata::makeSoundRows();
        if (!phonedata::ReadSoundList(job, *rows))
            return std::nullopt;
        std::vector<phonedata::Melody> all;
        for (int row = 1; row <= job.memory.sounds.upperBound(); ++row)
            all.push_back(job.memory.sounds.row(row));
        return all;
    });
    if (melodies.value)
        return Cause::None;
    return melodies.cause == Cause::None ? Cause::NotRead : melodies.cause;
}

Cause readRingtones(const RingtoneJob& job)
{
    if (const Cause cause = readMelodies(job); cause != Cause::None)
        return cause;
    job.line.pause(phonedata::pauseAheadOfSettings);
    for (int index = 0; index < phonedata::soundEventCount; ++index) {
        if (job.cancel && job.cancel->Checked())
            return Cause::Interrupted;
        if (const Cause cause = learnSetting(job, static_cast<SoundEvent>(index)); cause != Cause::None)
            return cause;
    }
    return Cause::None;
}

Cause readRingtone(const RingtoneJob& job, SoundEvent event)
{
    job.line.pause(phonedata::pauseAheadOfSettings);
    return learnSetting(job, event);
}

SettingOutcome<SoundSetting> setRingtone(const RingtoneJob& job, SoundEvent event, const QString& toneName,
                                         int volume, const phonedata::SettingRead& report)
{
    const QString code = phonedata::GetSoundCode(toneName, job.context().sy.PhoneType, job.memory.sounds);
    if (code.isEmpty())
        return {.outcome = {.cause = Cause::NotPossible, .planned = 1}, .now = {}};
    return changeRingtone(job, event, app::toCp1252(code), volume, RecordCause::Set, report);
}

bool isNamed(const SoundSetting& setting, const phonedata::SoundList& sounds)
{
    const bool isBuiltIn = setting.soundId >= 1 && setting.soundId <= phonedata::builtInMelodies().size();
    return isBuiltIn || sounds.withId(setting.soundId);
}

SettingOutcome<SoundSetting> restoreRingtone(const RingtoneJob& job, const QByteArray& answer)
{
    const auto setting = phonedata::parseWholeSetting(answer);
    if (!setting)
        return {.outcome = {.cause = Cause::NotPossible, .planned = 1}, .now = {}};
    return changeRingtone(job, setting->first, QByteArray::number(setting->second.soundId),
                          setting->second.volume, RecordCause::Undo, {});
}

SettingOutcome<QDateTime> setClock(link::Line& line)
{
    constexpr double pauseBeforeReading = 0.5; // seconds
    SettingOutcome<QDateTime> result{.outcome = {.planned = 1}};
    Outcome& outcome = result.outcome;
    noteSent(line, link::SetPhoneTime(line), outcome);
    const bool isRefused = outcome.state == State::Unchanged;
    Asked<QDateTime> now;
    if (outcome.cause != Cause::LineGone) {
        line.pause(pauseBeforeReading);
        now = readClockBack(line);
        result.now = now.value;
    }
    if (!result.now) {
        if (outcome.cause == Cause::None)
            outcome.cause = now.cause == Cause::None ? readingFailure(line) : now.cause; // or no time in it
        return result;
    }
    const bool isRight = areSameTime(*result.now, line.context().clock.Now());
    outcome.verified = isRight ? 1 : 0;
    if (isRight && !isRefused) {
        outcome.state = State::Done;
        outcome.cause = Cause::None;
    } else if (outcome.cause == Cause::None) {
        outcome.cause = Cause::Mismatch;
    }
    return result;
}

} // namespace kalmo::operations
