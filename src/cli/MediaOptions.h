#pragma once

#include "cli/Job.h"
#include "media/Failure.h"

namespace kalmo::cli {

/// Options of a conversion.
struct MediaOptions
{
    int trimSeconds = 0; ///< 0 for the whole sound
    int quality = 80;    ///< of a JPEG
};

/// Reads --trim and --quality. Gives nothing for invalid values, after it has reported them.
std::optional<MediaOptions> mediaOptions(Job& job);

/// Exit status for such a failure.
ExitStatus statusOf(const media::Failure& failure);
/// The message for it, without the full stop.
QString textOf(const media::Failure& failure);

} // namespace kalmo::cli
