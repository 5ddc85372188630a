#pragma once

#include "app/Context.h"
#include "app/Programs.h"
#include "media/Converted.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

inline constexpr int codesPerSecond = 8000; ///< bytes of a second of sound in the phone

/// Facts in the head of a sound file.
struct SoundFacts
{
    double seconds = 0; ///< 0 where it doesn't say
    int rate = 0;       ///< samples a second
};

/// Reads length and rate of a WAV or MP3 file. A failure leaves `facts` unchanged.
std::optional<Failure> readSoundFacts(app::Context& context, const QString& path, SoundFacts& facts,
                                      const toolkit::CancelBox* cancel = nullptr);

/// The length of a sound, of which the head of the file claims `seconds`, as far as the file holds it. A WAV
/// file that was written to a pipe, or whose recorder was stopped, claims more.
double withinFile(const QString& path, double seconds);

/// Returns true for the files that are converted to a sound, by their ending.
bool isConvertible(const QString& path);

/// The call of a program that prints the seconds of a sound.
app::ProgramCall lengthCall(const app::Context& context, const QString& path);

/// Converts a WAV or MP3 file to a sound for handsets: G.722 at 64 kbit/s, loudest sample at -1 dB. Keeps the
/// first `trimSeconds` of it, 0 for all.
Converted convertSound(app::Context& context, const QString& source, const toolkit::Progress& progress,
                       int trimSeconds);
/// Converts it to a file. Returns the failure, and then writes no target; nothing for success.
std::optional<Failure> ConvertAudioToL22(app::Context& context, const QString& source, const QString& target,
                                         const toolkit::Progress& progress, int trimSeconds);

/// The codes of a stream of words: every second byte, from the first on.
QByteArray thinned(const QByteArray& words);

} // namespace kalmo::media
