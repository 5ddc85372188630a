#pragma once

#include "link/mdlComm.h"
#include "phonedata/PhoneMemory.h"
#include "toolkit/Progress.h"

#include <functional>

namespace kalmo::phonedata {

/// What the operations on ringtones work with. For handsets of types 2 to 4.
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

/// Tells a reader of settings what one event is set to.
using SettingRead =
    std::function<void(SoundEvent event, const SoundSetting& setting, const QString& toneName)>;

/// The list of the phone's own melodies, named `LvwSounds`.
std::unique_ptr<toolkit::ListRows> makeSoundRows();

/// Reads the phone's own melodies into `memory.sounds` and the list. Rows read before a failure stay. Has to
/// run before the settings are read, whose tones it names.
bool ReadSoundList(const RingtoneJob& job, toolkit::ListRows& list);

/// Reads the four settings into `memory.soundSettings` and reports each one. Those read before a failure
/// stay. A read that is cancelled fails and is not told of.
bool ReadSoundSettings(const RingtoneJob& job, const SettingRead& report);

/// Sends one setting; true if the phone took it. `volume` is 1 to 6. The settings are to be read again
/// afterwards, whatever the result.
bool SetSound(const RingtoneJob& job, SoundEvent event, const QString& toneName, int volume);

} // namespace kalmo::phonedata
