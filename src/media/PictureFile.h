#pragma once

#include "app/Context.h"
#include "media/Failure.h"
#include "media/UploadRules.h"

namespace kalmo::media {

/// How a picture is written.
struct PictureForm
{
    QSize size;
    bool asJpeg = true;
    int quality = defaultQuality; ///< of a JPEG
    int depth = 24;               ///< bits a pixel of a BMP, 24 or 32
    Fit fit = Fit::Stretch;
};

/// Makes of a picture a file in that form. What went wrong, and then there is no new target; nothing for
/// success. Yields meanwhile.
std::optional<Failure> convertPicture(app::Context& context, const QString& source, const QString& target,
                                      const PictureForm& form);

} // namespace kalmo::media
