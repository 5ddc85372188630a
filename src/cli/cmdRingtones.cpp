// The commands about ringtones.

#include "cli/Commands.h"
#include "cli/FindPhone.h"
#include "cli/Suggestion.h"
#include "cli/Tables.h"
#include "phonedata/Ringtones.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace kalmo::cli {

using phonedata::SoundEvent;

namespace {

constexpr int risingVolume = 6;

constexpr std::array<QStringView, phonedata::soundEventCount> eventNames = {u"external", u"internal",
                                                                            u"appointment", u"alarm"};

/// What the handset is set to, and the melodies to choose from.
struct Ringtones
{
    std::array<QString, phonedata::soundEventCount> tones;
    std::array<int, phonedata::soundEventCount> volumes = {};
};

bool readMelodies(Job& job)
{
    const auto rows = phonedata::makeSoundRows();
    return phonedata::ReadSoundList({job.line, job.memory, nullptr, nullptr}, *rows);
}

bool readSettings(Job& job, Ringtones& ringtones)
{
    return phonedata::ReadSoundSettings(
        {job.line, job.memory, nullptr, nullptr, &job.stop},
        [&ringtones](SoundEvent event, const phonedata::SoundSetting& setting, const QString& tone) {
            ringtones.tones[static_cast<size_t>(event)] = tone;
            ringtones.volumes[static_cast<size_t>(event)] = setting.volume;
        });
}

void show(Job& job, const Ringtones& ringtones)
{
    QJsonObject object;
    std::vector<QStringList> events;
    for (size_t index = 0; index < eventNames.size(); ++index) {
        const int volume = ringtones.volumes[index];
        object.insert(eventNames[index],
                      QJsonObject{{u"tone"_s, ringtones.tones[index]}, {u"volume"_s, volume}});
        events.push_back({eventNames[index].toString(), ringtones.tones[index],
                          volume == risingVolume ? u"rising"_s : QString::number(volume)});
    }
    QJsonArray melodies;
    std::vector<QStringList> rows;
    const phonedata::SoundList& sounds = job.memory.sounds;
    for (int index = 1; index <= sounds.upperBound(); ++index) {
        const phonedata::Melody& melody = sounds.row(index);
        melodies.append(QJsonObject{{u"name"_s, melody.name},
                                    {u"kind"_s, melody.kind},
                                    {u"size"_s, melody.size},
                                    {u"id"_s, melody.id}});
        rows.push_back({melody.name, melody.kind, QString::number(melody.size), QString::number(melody.id)});
    }
    object.insert(u"melodies"_s, melodies);
    QString text = alignedTable({u"Event"_s, u"Tone"_s, u"Volume"_s}, events);
    if (!rows.empty())
        text += u'\n' + alignedTable({u"Melody"_s, u"Kind"_s, u"Bytes"_s, u"Id"_s}, rows);
    job.out.show(object, text);
}

/// The melody that a word names: its name, or the number of one of the ten that every handset has. Empty if
/// there is none, which has been told.
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
    Ringtones ringtones;
    const bool isComplete = readMelodies(job) && readSettings(job, ringtones);
    if (job.isInterrupted())
        return ExitRefused;
    if (!isComplete)
        return ExitFailed;
    show(job, ringtones);
    return ExitDone;
}

ExitStatus runRingtonesSet(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    const auto event =
        static_cast<size_t>(std::find(eventNames.begin(), eventNames.end(), words[0]) - eventNames.begin());
    const int volume = words[2] == u"rising"_s ? risingVolume : words[2].toInt();
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    job.progress.phase(u"Setting the ringtone"_s);
    if (!readMelodies(job))
        return ExitFailed;
    const QString tone = toneNamed(job, words[1]);
    if (tone.isEmpty())
        return ExitWrongUse;
    if (job.isInterrupted())
        return ExitRefused;
    const bool wasSet = phonedata::SetSound({job.line, job.memory, nullptr, nullptr},
                                            static_cast<SoundEvent>(event), tone, volume);
    job.context.clock.WaitSeconds(1);
    Ringtones ringtones;
    const bool isComplete = readSettings(job, ringtones);
    if (job.isInterrupted(wasSet ? u"the ringtone was set, but not read back"_s
                                 : u"the phone did not take the ringtone"_s))
        return ExitRefused;
    if (!isComplete)
        return ExitFailed;
    show(job, ringtones);
    if (wasSet && ringtones.tones[event] == tone && ringtones.volumes[event] == volume)
        return ExitDone;
    job.out.error(
        u"the handset is not set to \"%1\" and volume %2."_s.arg(printable(tone), QString::number(volume)));
    return ExitFailed;
}

} // namespace kalmo::cli
