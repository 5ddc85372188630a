// The commands that show and set the ringtones.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/SettingReport.h"
#include "cli/Suggestion.h"
#include "cli/Tables.h"
#include "operations/PhoneSettings.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace kalmo::cli {

namespace {

constexpr int risingVolume = 6;

constexpr std::array<QStringView, phonedata::soundEventCount> eventNames = {u"external", u"internal",
                                                                            u"appointment", u"alarm"};

/// The settings of some events, as JSON and as rows of a table.
struct ShownSettings
{
    QJsonObject object = {};
    std::vector<QStringList> rows = {};

    void add(Job& job, size_t event, const phonedata::SoundSetting& setting)
    {
        const QString tone = phonedata::GetSoundName(setting.soundId, job.memory.sounds, job.context.log);
        object.insert(eventNames[event], QJsonObject{{u"tone"_s, tone}, {u"volume"_s, setting.volume}});
        rows.push_back({eventNames[event].toString(), tone,
                        setting.volume == risingVolume ? u"rising"_s : QString::number(setting.volume)});
    }
    QString text() const { return alignedTable({u"Event"_s, u"Tone"_s, u"Volume"_s}, rows); }
};

/// Shows the four settings and the melodies to choose from.
void show(Job& job)
{
    const phonedata::SoundList& sounds = job.memory.sounds;
    ShownSettings settings;
    for (size_t index = 0; index < eventNames.size(); ++index)
        settings.add(job, index, job.memory.soundSettings[index]);
    QJsonArray melodies;
    std::vector<QStringList> rows;
    for (int index = 1; index <= sounds.upperBound(); ++index) {
        const phonedata::Melody& melody = sounds.row(index);
        melodies.append(QJsonObject{{u"name"_s, melody.name},
                                    {u"kind"_s, melody.kind},
                                    {u"size"_s, melody.size},
                                    {u"id"_s, melody.id}});
        rows.push_back({melody.name, melody.kind, QString::number(melody.size), QString::number(melody.id)});
    }
    settings.object.insert(u"melodies"_s, melodies);
    QString text = settings.text();
    if (!rows.empty())
        text += u'\n' + alignedTable({u"Melody"_s, u"Kind"_s, u"Bytes"_s, u"Id"_s}, rows);
    job.out.show(settings.object, text);
}

phonedata::RingtoneJob ringtoneJob(Job& job)
{
    return {job.line, job.memory, nullptr, nullptr, &job.stop};
}

/// Prints why a reading failed, if it did.
ExitStatus reportReading(Job& job, operations::Cause cause)
{
    if (job.reportInterruption())
        return ExitRefused;
    if (cause == operations::Cause::None)
        return ExitDone;
    job.progress.clear();
    job.out.error(u"could not read the ringtones: %1."_s.arg(reasonText(job, cause)));
    return ExitFailed;
}

/// The melody that a word names: its name, or the number of one of the ten that every handset has. Empty,
/// after a message, if there is none.
QString toneNamed(Job& job, const QString& word)
{
    QStringList names = phonedata::builtInMelodies();
    bool isNumber = false;
    const int number = word.toInt(&isNumber);
    if (isNumber && number >= 1 && number <= names.size())
        return names[number - 1];
    for (int index = 1; index <= job.memory.sounds.upperBound(); ++index)
        names.append(job.memory.sounds.row(index).name);
    if (names.contains(word))
        return word;
    const QString near = closestTo(word, names);
    job.out.error(u"this handset has no melody \"%1\"; "_s.arg(printable(word)) +
                  (near.isEmpty() ? u"\"kalmoctl ringtones\" lists them."_s
                                  : u"did you mean \"%1\"?"_s.arg(printable(near))));
    return {};
}

} // namespace

ExitStatus runRingtones(Job& job)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    job.progress.phase(u"Reading the ringtones"_s);
    const ExitStatus read = reportReading(job, operations::readRingtones(ringtoneJob(job)));
    if (read != ExitDone)
        return read;
    show(job);
    return ExitDone;
}

ExitStatus runRingtonesSet(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    const auto event = static_cast<phonedata::SoundEvent>(
        std::find(eventNames.begin(), eventNames.end(), words[0]) - eventNames.begin());
    const int volume = words[2] == u"rising"_s ? risingVolume : words[2].toInt();
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    job.progress.phase(u"Setting the ringtone"_s);
    const ExitStatus read = reportReading(job, operations::readMelodies(ringtoneJob(job)));
    if (read != ExitDone)
        return read;
    const QString tone = toneNamed(job, words[1]);
    if (tone.isEmpty())
        return ExitWrongUse;
    const auto [outcome, now] = operations::setRingtone(ringtoneJob(job), event, tone, volume);
    job.progress.clear();
    ShownSettings settings;
    if (now)
        settings.add(job, static_cast<size_t>(event), *now);
    settings.object.insert(u"state"_s, operations::wordOf(outcome.state));
    if (now || job.out.isJson())
        job.out.show(settings.object, now ? settings.text() : QString());
    const ExitStatus status = reportSetting(job, {.name = u"the ringtone"_s}, outcome);
    return status != ExitDone && job.stop.Checked() ? ExitRefused : status;
}

} // namespace kalmo::cli
