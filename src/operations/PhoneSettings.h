#pragma once

#include "operations/Outcome.h"
#include "operations/RecordFile.h"
#include "phonedata/AreaCodes.h"
#include "phonedata/Ringtones.h"

#include <QDateTime>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

/// Result of an operation on a setting: one item, which is recorded before it changes and read back after.
template <typename Value>
struct SettingOutcome
{
    Outcome outcome = {};
    std::optional<Value> now = {}; ///< the phone's setting after the change, if it could be read
};

/// Reads the four codes; the phone's answer as text with commas, asked until it is sure.
std::pair<std::optional<QString>, Cause> readAreaCodes(link::Line& line);

/// Sets the four codes.
SettingOutcome<QString> setAreaCodes(link::Line& line, const phonedata::AreaCodes& codes,
                                     RecordCause recordCause = RecordCause::Set);

/// Puts back the codes of an earlier answer. Cause::NotPossible if it holds none.
SettingOutcome<QString> restoreAreaCodes(link::Line& line, const QByteArray& answer);

/// Reads the phone's own melodies into `job.memory`, asked until they are sure. Returns Cause::None, or why
/// they are not known.
Cause readMelodies(const phonedata::RingtoneJob& job);

/// Reads the phone's own melodies and the four settings into `job.memory`, asked until they are sure.
/// Returns Cause::None, or why they are not known.
Cause readRingtones(const phonedata::RingtoneJob& job);

/// The same for the setting of one event, without the melodies.
Cause readRingtone(const phonedata::RingtoneJob& job, phonedata::SoundEvent event);

/// Sets the tone and the volume, 1 to 6, of one event, and reads it back. With `report` all settings are read
/// after the change and handed to it. Cause::NotPossible, and nothing is sent, if no melody has this name.
SettingOutcome<phonedata::SoundSetting> setRingtone(const phonedata::RingtoneJob& job,
                                                    phonedata::SoundEvent event, const QString& toneName,
                                                    int volume, const phonedata::SettingRead& report = {});

/// Returns true if the phone's melodies have a name for the setting's tone. GetSoundName gives the name of
/// another one otherwise.
bool isNamed(const phonedata::SoundSetting& setting, const phonedata::SoundList& sounds);

/// Puts back the setting of an earlier answer, with its own code. Cause::NotPossible if it holds none.
SettingOutcome<phonedata::SoundSetting> restoreRingtone(const phonedata::RingtoneJob& job,
                                                        const QByteArray& answer);

/// Sets the phone's clock to the PC's time and reads it back, also after a refusal. Nothing is recorded:
/// there is nothing to put back. `verified` is 1 if the phone then shows the PC's time to a minute, which it
/// may do a minute late.
SettingOutcome<QDateTime> setClock(link::Line& line);

} // namespace kalmo::operations
