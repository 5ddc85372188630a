#pragma once

#include "app/Context.h"
#include "app/Programs.h"
#include "media/Failure.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

inline constexpr int codesPerSecond = 8000; ///< bytes of a second of sound in the phone

/// What a sound file says of itself.
struct SoundFacts
{
    double seconds = 0; ///< 0 where it doesn't say
    int rate = 0;       ///< samples a second
};

/// Looks at a WAV or MP3 file. A failure leaves `facts` alone.
std::optional<Failure> readSoundFacts(app::Context& context, const QString& path, SoundFacts& facts,
                                      const toolkit::CancelBox* cancel = nullptr);

/// A call that prints the seconds of a sound.
app::ProgramCall lengthCall(const app::Context& context, const QString& path);

/// Makes of a WAV or MP3 file a sound that handsets take: G.722 at 64 kbit/s, loudest sample at -1 dB.
/// `trimSeconds` is how much of its start is kept, 0 for all. What went wrong, and then there is no new
/// target; nothing for success.
std::optional<Failure> ConvertAudioToL22(app::Context& context, const QString& source, const QString& target,
                                         const toolkit::Progress& progress, int trimSeconds);

/// The codes of a stream of words: every second byte, from the first on.
QByteArray thinned(const QByteArray& words);

} // namespace kalmo::media
