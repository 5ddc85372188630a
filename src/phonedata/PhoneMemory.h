#pragma once

#include "phonedata/ClassicEntry.h"
#include "phonedata/SoundList.h"

#include <QDateTime>

#include <array>

namespace kalmo::phonedata {

/// How sure the program is of what a store in the phone holds.
enum class Certainty {
    Unknown,  ///< never read, or something went wrong since
    Doubtful, ///< read, but an entry may have been skipped or garbled, or shows the wrong melody
    Known,
};

/// The known content of one store in the phone.
struct StoreContent
{
    Certainty certainty = Certainty::Unknown;
    std::vector<ClassicEntry> entries;
    QByteArrayList replies; ///< one for each entry: the phone's answer to the read command, codes included
    QDateTime since;        ///< when it was read or written; the phone may have changed it by itself later
    /// With Doubtful: the line was undisturbed, and `replies` are sure, but the names of the phone's own
    /// melodies are not.
    bool lacksOnlyMelodies = false;

    void becomes(std::vector<ClassicEntry> now, Certainty how, QByteArrayList nowReplies = {})
    {
        entries = std::move(now);
        replies = std::move(nowReplies);
        certainty = how;
        lacksOnlyMelodies = false;
    }
    void becomesDoubtfulByMelodies()
    {
        certainty = Certainty::Doubtful;
        lacksOnlyMelodies = true;
    }
    void forget() { becomes({}, Certainty::Unknown); }
};

/// The events that a ringtone can be chosen for, in the order in which they are read.
enum class SoundEvent { External, Internal, Appointment, Alarm };
inline constexpr int soundEventCount = 4;

struct SoundSetting
{
    qint32 soundId = 0;
    qint32 volume = 0; ///< 1 to 5, 6 is rising, 0 if it was not read

    bool isRead() const { return volume > 0; }
    bool operator==(const SoundSetting&) const = default;
};

/// Knowledge of the phone's memory in this run. Made once in main.
struct PhoneMemory
{
    bool TbDirty = false; ///< the phonebook on screen differs from the phone's
    bool NeDirty = false; ///< the provider list on screen differs from the phone's
    StoreContent phonebook;
    StoreContent providers;
    SoundList sounds;
    bool areSoundsKnown = false; ///< `sounds` was read to its end over an undisturbed line
    std::array<SoundSetting, soundEventCount> soundSettings = {};

    /// After a search another handset may hang on the line.
    void forget()
    {
        phonebook.forget();
        providers.forget();
        sounds.clear();
        areSoundsKnown = false;
        soundSettings = {};
    }
};

} // namespace kalmo::phonedata
