#include "phonedata/Ringtones.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "link/PhoneModels.h"
#include "toolkit/Progress.h"

#include <QRegularExpression>

#include <array>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;
using app::ValInt;

namespace {

struct EventRow
{
    QStringView caption;
    QByteArrayView stem;
};

constexpr std::array<EventRow, soundEventCount> eventTable = {{
    {u"Externe Anrufe", "^WREX"},
    {u"Interne Anrufe", "^WRIN"},
    {u"Termine", "^WRAP"},
    {u"Wecker", "^WRAL"},
}};

constexpr double firstSettingTimeout = 5;
constexpr double otherTimeout = 3;

const QString readError = u"Fehler beim Einlesen der Klingeltöne"_s;

const EventRow& rowOf(SoundEvent event)
{
    return eventTable[static_cast<size_t>(event)];
}

QByteArray queryOf(SoundEvent event)
{
    return "AT" + rowOf(event).stem.toByteArray() + "?\r";
}

QByteArray listCommand(int phoneType)
{
    return "AT^WFFO=\"" + link::melodyFolder(phoneType).toByteArray() + "\"\r";
}

bool fail(const RingtoneJob& job, const QByteArray& command, const QString& status)
{
    job.line.tellTransferError(command);
    toolkit::setStatus(job.panel, status);
    return false;
}

toolkit::ListRow toRow(const Melody& melody)
{
    toolkit::ListRow row;
    row.key = u'A' + QString::number(melody.id);
    row.icon = u"Sounds"_s;
    row.cells = {{melody.name}, {melody.kind}};
    return row;
}

} // namespace

QString captionOf(SoundEvent event)
{
    return rowOf(event).caption.toString();
}

std::unique_ptr<toolkit::ListRows> makeSoundRows()
{
    return std::make_unique<toolkit::ListRows>(u"LvwSounds"_s,
                                               QList<toolkit::ListColumn>{{u"Name"_s}, {u"Typ"_s}});
}

bool ReadSoundList(const RingtoneJob& job, toolkit::ListRows& list)
{
    const toolkit::BusyScope busy(job.window);
    toolkit::setStatus(job.panel, u"Klingeltöne werden ein eingelesen..."_s);
    list.clear();
    job.memory.sounds.clear();
    job.memory.areSoundsKnown = false;
    const QByteArray command = listCommand(job.context().sy.PhoneType);
    QByteArray answer;
    if (!job.line.exchange(answer, command, otherTimeout))
        return fail(job, command, readError);
    for (const QString& line : app::fromCp1252(answer).split(u"\r\n"_s)) {
        if (!line.contains(u"^WFFO:"_s))
            continue;
        const QStringList parts = QString(line).remove(u"^WFFO: "_s).split(u',');
        if (parts.size() < 6)
            return fail(job, command, readError);
        const Melody melody{parts[1], parts[3], ValInt(parts[4]), ValInt(parts[5])};
        job.memory.sounds.add(melody);
        list.add(toRow(melody));
    }
    job.memory.areSoundsKnown = job.line.isAnswerSafe();
    toolkit::setStatus(job.panel, u"Bereit."_s);
    return true;
}

bool ReadSoundSettings(const RingtoneJob& job, const SettingRead& report)
{
    const toolkit::BusyScope busy(job.window);
    app::Context& context = job.context();
    toolkit::setStatus(job.panel, u"Klingeltöne werden eingelesen..."_s);
    job.line.pause(pauseAheadOfSettings);
    for (int index = 0; index < soundEventCount; ++index) {
        if (index > 0)
            job.line.pause(pauseBetweenSettings);
        if (job.cancel && job.cancel->Checked())
            return false;
        const auto event = static_cast<SoundEvent>(index);
        QByteArray answer;
        if (!askSetting(job.line, event, answer))
            return fail(job, queryOf(event), readError);
        SoundSetting& setting = job.memory.soundSettings[index];
        setting = parseSetting(event, answer);
        report(event, setting, GetSoundName(setting.soundId, job.memory.sounds, context.log));
    }
    toolkit::setStatus(job.panel, u"Bereit."_s);
    return true;
}

bool askSetting(link::Line& line, SoundEvent event, QByteArray& answer)
{
    return line.exchange(answer, queryOf(event),
                         event == SoundEvent::External ? firstSettingTimeout : otherTimeout);
}

SoundSetting parseSetting(SoundEvent event, const QByteArray& answer)
{
    const QByteArray values =
        QByteArray(answer).replace(rowOf(event).stem.toByteArray() + ": ", QByteArray());
    const QStringList parts = app::fromCp1252(values).split(u',');
    return {ValInt(parts.value(0)), ValInt(parts.value(1))};
}

std::optional<std::pair<SoundEvent, SoundSetting>> parseWholeSetting(const QByteArray& answer)
{
    static const QRegularExpression form(u"^(\\^W[A-Z]{3}): ([0-9]{1,9}),([0-9]{1,2})$"_s);
    const auto match = form.match(QString::fromLatin1(answer.trimmed()));
    for (int index = 0; match.hasMatch() && index < soundEventCount; ++index) {
        if (match.captured(1).toLatin1() == eventTable[index].stem)
            return std::pair(static_cast<SoundEvent>(index),
                             SoundSetting{match.captured(2).toInt(), match.captured(3).toInt()});
    }
    return std::nullopt;
}

bool SetSound(const RingtoneJob& job, SoundEvent event, const QString& toneName, int volume)
{
    const QString code = GetSoundCode(toneName, job.context().sy.PhoneType, job.memory.sounds);
    return SetSoundCode(job, event, app::toCp1252(code), volume);
}

bool SetSoundCode(const RingtoneJob& job, SoundEvent event, const QByteArray& code, int volume)
{
    const toolkit::BusyScope busy(job.window);
    toolkit::setStatus(job.panel, u"Klingelton wird gesetzt..."_s);
    const QByteArray command =
        "AT" + rowOf(event).stem.toByteArray() + '=' + code + ',' + QByteArray::number(volume) + '\r';
    QByteArray answer;
    if (!job.line.exchange(answer, command, otherTimeout))
        return fail(job, command, u"Fehler beim setzen des Klingeltons."_s);
    toolkit::setStatus(job.panel, u"Bereit."_s);
    return true;
}

} // namespace kalmo::phonedata
