#pragma once

#include "app/Context.h"
#include "media/Converted.h"
#include "media/UploadRules.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// Converts a picture to that form. Yields meanwhile, and ends as a converter does: if the user cancels, or
/// after `longestWork`.
Converted convertPicture(app::Context& context, const QString& source, const PictureForm& form,
                         const toolkit::CancelBox* cancel = nullptr);

} // namespace kalmo::media
