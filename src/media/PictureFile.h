#pragma once

#include "app/Context.h"
#include "media/Failure.h"
#include "media/UploadRules.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// The form of a picture file.
struct PictureForm
{
    QSize size;
    bool asJpeg = true;
    int quality = defaultQuality; ///< of a JPEG
    int depth = 24;               ///< bits a pixel of a BMP, 24 or 32
    Fit fit = Fit::Stretch;
};

/// Converts a picture to a file in that form. Returns the failure, and then writes no target; nothing for
/// success. Yields meanwhile, and ends as a converter does: if the user cancels, or after `longestWork`.
std::optional<Failure> convertPicture(app::Context& context, const QString& source, const QString& target,
                                      const PictureForm& form, const toolkit::CancelBox* cancel = nullptr);

} // namespace kalmo::media
