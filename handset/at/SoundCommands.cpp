// Commands about ringtones and melodies.

#include "handset/at/AtCommand.h"

#include "app/CodePage.h"

#include <algorithm>

namespace kalmo::handset {

using app::toCp1252;

namespace {

constexpr int builtInMelodies = 10;
constexpr int loudest = 6; // rising
constexpr double secondsPerMelody = 0.002;

bool isSound(const Settings& settings, int sound)
{
    return (sound >= 0 && sound <= builtInMelodies) ||
           std::any_of(settings.melodies.begin(), settings.melodies.end(),
                       [sound](const Melody& melody) { return melody.id == sound; });
}

AtAnswer setRingtone(AtContext& context, const AtRequest& request, Ringtone& ringtone)
{
    const QList<QByteArray> parts = request.argument.split(',');
    bool soundOk = false;
    bool volumeOk = false;
    const Ringtone wanted{parts.value(0).toInt(&soundOk), parts.value(1).toInt(&volumeOk)};
    if (parts.size() != 2 || !soundOk || !volumeOk || !isSound(context.phone.settings, wanted.sound) ||
        wanted.volume < 1 || wanted.volume > loudest)
        return AtAnswer::error(BadIndex);
    ringtone = wanted;
    context.phone.keepSettings();
    return AtAnswer::ok();
}

template <RingtoneEvent event>
AtAnswer ringtone(AtContext& context, const AtRequest& request)
{
    Ringtone& setting = context.phone.settings.ringtones[event];
    if (request.form == Form::Set)
        return setRingtone(context, request, setting);
    return AtAnswer::ok(request.name + ": " + QByteArray::number(setting.sound) + ',' +
                        QByteArray::number(setting.volume));
}

QByteArray melodyLine(int index, const Melody& melody)
{
    return "^WFFO: " + QByteArray::number(index) + ',' + toCp1252(melody.name) + ",0," +
           toCp1252(melody.kind) + ',' + QByteArray::number(melody.size) + ',' +
           QByteArray::number(melody.id);
}

AtAnswer listMelodies(AtContext& context, const AtRequest& request)
{
    if (request.argument != '"' + QByteArray(context.phone.family.melodyList) + '"')
        return AtAnswer::error(BadIndex);
    QByteArrayList lines;
    for (const Melody& melody : context.phone.settings.melodies)
        lines.append(melodyLine(static_cast<int>(lines.size()), melody));
    return AtAnswer::ok(lines.join("\r\n"), secondsPerMelody * static_cast<double>(lines.size()));
}

constexpr FamilySet withRingtones{2, 4};

constexpr AtCommand soundTable[] = {
    {"^WREX", Form::Read | Form::Set, withRingtones, 0.12, ringtone<ExternalCall>},
    {"^WRIN", Form::Read | Form::Set, withRingtones, 0.12, ringtone<InternalCall>},
    {"^WRAP", Form::Read | Form::Set, withRingtones, 0.12, ringtone<Appointment>},
    {"^WRAL", Form::Read | Form::Set, withRingtones, 0.12, ringtone<AlarmClock>},
    {"^WFFO", Form::Set, withRingtones, 0.2, listMelodies},
};

} // namespace

std::span<const AtCommand> soundCommands()
{
    return soundTable;
}

} // namespace kalmo::handset
