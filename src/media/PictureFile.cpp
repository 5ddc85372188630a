#include "media/PictureFile.h"

#include "media/Beside.h"
#include "media/PictureConversion.h"

namespace kalmo::media {

namespace {

Converted coded(const QString& source, const PictureForm& form, const std::stop_token& stop)
{
    const LoadedPicture picture = loadPicture(source, form.size, stop);
    if (picture.failure)
        return {.failure = picture.failure};
    Converted result{.bytes = pictureBytes(picture.image, form)};
    if (result.bytes.isEmpty())
        result.failure = Failure{Fault::NoJpeg, source};
    return result;
}

} // namespace

Converted convertPicture(app::Context& context, const QString& source, const PictureForm& form,
                         const toolkit::CancelBox* cancel)
{
    auto [result, stopped] = beside(context.clock, cancel, [source, form](const std::stop_token& stop) {
        return coded(source, form, stop);
    });
    return stopped ? Converted{.failure = Failure{*stopped, source}} : result;
}

} // namespace kalmo::media
