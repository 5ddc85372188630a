#pragma once

#include "link/mdlComm.h"
#include "phonedata/PhoneMemory.h"
#include "toolkit/Progress.h"

#include <functional>
#include <optional>

namespace kalmo::phonedata {

/// Everything that the operations on ringtones need. For handsets of types 2 to 4.
struct RingtoneJob
{
    link::Line& line;
    PhoneMemory& memory;
    toolkit::BusyWindow* window;
    toolkit::StatusPanel* panel;
    const toolkit::CancelBox* cancel = nullptr; ///< looked at between two settings that are read

    app::Context& context() const { return line.context(); }
};

/// "Externe Anrufe" and so on.
QString captionOf(SoundEvent event);

/// Receives the setting of one event.
using SettingRead =
    std::function<void(SoundEvent event, const SoundSetting& setting, const QString& toneName)>;

/// The list of the phone's own melodies, named `LvwSounds`.
std::unique_ptr<toolkit::ListRows> makeSoundRows();

/// Reads the phone's own melodies into `memory.sounds` and the list. Rows read before a failure stay. Has to
/// run before the settings are read, whose tones it names.
bool ReadSoundList(const RingtoneJob& job, toolkit::ListRows& list);

/// Reads the four settings into `memory.soundSettings` and reports each one. Those read before a failure
/// stay. A read that is cancelled fails without a message.
bool ReadSoundSettings(const RingtoneJob& job, const SettingRead& report);

/// Sends one setting. Returns true if the phone took it. `volume` is 1 to 6. The settings are to be read
/// again afterwards, whatever the result. Part of the described interface.
bool SetSound(const RingtoneJob& job, SoundEvent event, const QString& toneName, int volume);

/// The same with the wire code of a tone, "33" for example.
bool SetSoundCode(const RingtoneJob& job, SoundEvent event, const QByteArray& code, int volume);

/// Pauses of the protocol, in seconds: ahead of the first query for a setting, ahead of each other one, and
/// after a setting was sent.
inline constexpr double pauseAheadOfSettings = 0.85;
inline constexpr double pauseBetweenSettings = 0.17;
inline constexpr double pauseAfterSetting = 1;

/// Asks for one setting without a message. `answer` gets the phone's answer as it is. Returns true if the
/// phone answered.
bool askSetting(link::Line& line, SoundEvent event, QByteArray& answer);

/// The setting in an answer, with or without the event's prefix: "^WREX: 33,6". What is no number counts
/// as 0, as described.
SoundSetting parseSetting(SoundEvent event, const QByteArray& answer);

/// The event and its setting in an answer with a prefix; nothing if it does not have exactly this form.
std::optional<std::pair<SoundEvent, SoundSetting>> parseWholeSetting(const QByteArray& answer);

} // namespace kalmo::phonedata
