#pragma once

#include "app/WorkFolder.h"
#include "media/Failure.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// Makes of a MIDI file of at most `largestMelody` bytes a melody that handsets take. What went wrong, and
/// then there is no new target; nothing for success.
std::optional<Failure> convertMelody(app::Context& context, const QString& source, const QString& target,
                                     const toolkit::Progress& progress);

} // namespace kalmo::media
