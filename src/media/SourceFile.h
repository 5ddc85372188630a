#pragma once

#include "media/Failure.h"

namespace kalmo::media {

/// Returns the failure if a file is not there or can't be read.
std::optional<Failure> checkSource(const QString& path);

} // namespace kalmo::media
