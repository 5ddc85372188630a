#pragma once

#include "app/Programs.h"
#include "media/Failure.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// The call of a program that converts a melody. Paths are absolute, or within the folder that the call gets.
app::ProgramCall melodyCall(const app::Context& context, const QString& source, const QString& target);

/// Converts a MIDI file of at most `largestMelody` bytes to a melody for handsets. Returns the failure, and
/// then writes no target; nothing for success.
std::optional<Failure> convertMelody(app::Context& context, const QString& source, const QString& target,
                                     const toolkit::Progress& progress);

} // namespace kalmo::media
