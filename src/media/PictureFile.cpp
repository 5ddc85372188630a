#include "media/PictureFile.h"

#include "app/Files.h"
#include "media/Beside.h"
#include "media/BitmapFile.h"
#include "media/PictureConversion.h"

namespace kalmo::media {

namespace {

struct Coded
{
    QByteArray bytes = {};
    std::optional<Failure> failure = {};
};

Coded coded(const QString& source, const PictureForm& form, const std::stop_token& stop)
{
    const LoadedPicture picture = loadPicture(source, form.size, stop);
    if (picture.failure)
        return {.failure = picture.failure};
    const QImage image = fitted(picture.image, form.size, form.fit);
    Coded result{.bytes = form.asJpeg ? jpegBytes(image, form.quality) : bitmapFile(image, form.depth)};
    if (result.bytes.isEmpty())
        result.failure = Failure{Fault::NoJpeg, source};
    return result;
}

} // namespace

std::optional<Failure> convertPicture(app::Context& context, const QString& source, const QString& target,
                                      const PictureForm& form, const toolkit::CancelBox* cancel)
{
    const auto [result, stopped] = beside(context.clock, cancel, [source, form](const std::stop_token& stop) {
        return coded(source, form, stop);
    });
    if (stopped)
        return Failure{*stopped, source};
    if (result.failure)
        return result.failure;
    QString reason;
    if (!app::writeWholeFile(target, result.bytes, &reason))
        return Failure{Fault::NotWritten, target, {}, reason};
    return {};
}

} // namespace kalmo::media
