#pragma once

#include "cli/Job.h"
#include "media/Failure.h"

namespace kalmo::cli {

/// What the options say about a conversion.
struct MediaOptions
{
    int trimSeconds = 0; ///< 0 for the whole sound
    int quality = 80;    ///< of a JPEG
};

/// Reads --trim and --quality; nothing for values that make no sense, which has been told.
std::optional<MediaOptions> mediaOptions(Job& job);

/// How a command ends for such a failure.
ExitStatus statusOf(const media::Failure& failure);
/// What it says then, without the full stop.
QString textOf(const media::Failure& failure);

} // namespace kalmo::cli
