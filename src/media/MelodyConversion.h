#pragma once

#include "app/Programs.h"
#include "media/Converted.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// The call of a program that converts a melody. Paths are absolute, or within the folder that the call gets.
app::ProgramCall melodyCall(const app::Context& context, const QString& source, const QString& target);

/// Converts a MIDI file of at most `largestMelody` bytes to a melody for handsets.
Converted convertMelody(app::Context& context, const QString& source, const toolkit::Progress& progress);

} // namespace kalmo::media
