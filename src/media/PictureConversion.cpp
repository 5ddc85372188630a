#include "media/PictureConversion.h"

#include "app/Files.h"
#include "media/BitmapFile.h"
#include "media/PictureEnd.h"
#include "media/SourceFile.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QImageWriter>
#include <QMimeDatabase>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <mutex>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostPixels = 100'000'000; // of a file; cameras reach half of that
constexpr qint64 mostBytes = 384'000'000;  // of its pixels in memory; scaling may need that twice
constexpr int mostMegabytes = 512;         // of memory for one picture in the toolkit
constexpr double mostRead = 25'000'000;    // pixels of a picture that was scaled while it was read
constexpr double spare = 2;                // a picture is read so many times larger than it will be
constexpr int lowestQuality = 10;
constexpr int highestQuality = 100;

/// A file whose reader comes to an end as soon as a stop is requested.
class StoppableFile final : public QFile
{
public:
    StoppableFile(const QString& path, const std::stop_token& stop) : QFile(path), m_stop(stop) {}

protected:
    qint64 readData(char* bytes, qint64 most) override
    {
        return m_stop.stop_requested() ? -1 : QFile::readData(bytes, most);
    }

private:
    std::stop_token m_stop;
};

LoadedPicture unfit(const QString& path, const QString& why)
{
    return {.failure = Failure{Fault::BadPicture, path, {}, why}};
}

/// The size in which a picture is read, so that scaling it down to `wanted` loses nothing.
QSize readingSize(QSize size, QSize wanted)
{
    const double needed = spare * std::max(static_cast<double>(wanted.width()) / size.width(),
                                           static_cast<double>(wanted.height()) / size.height());
    const double scale =
        std::min(needed, std::sqrt(mostRead / (static_cast<double>(size.width()) * size.height())));
    if (scale >= 1)
        return size;
    return {std::max(1, static_cast<int>(std::lround(size.width() * scale))),
            std::max(1, static_cast<int>(std::lround(size.height() * scale)))};
}

QImage onWhite(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image.convertToFormat(QImage::Format_RGB32);
    QImage opaque(image.size(), QImage::Format_RGB32);
    opaque.fill(Qt::white);
    QPainter painter(&opaque);
    painter.drawImage(0, 0, image);
    return opaque;
}

/// The middle of a picture in the shape of `size`.
QRect middle(QSize picture, QSize size)
{
    QSize part = size.scaled(picture, Qt::KeepAspectRatio);
    part = part.expandedTo({1, 1}).boundedTo(picture);
    return {QPoint((picture.width() - part.width()) / 2, (picture.height() - part.height()) / 2), part};
}

/// Returns true for formats of pixels. Drawings such as SVG need fonts and may refer to other files.
bool isPhotoFormat(const QByteArray& format)
{
    static const QByteArrayList formats = {"bmp", "gif", "jpeg", "jpg", "png"};
    return formats.contains(format);
}

/// The failure for a file that has no picture of a known format.
LoadedPicture unknown(const QString& path)
{
    const QString kind = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchContent).name();
    if (kind.startsWith(u"image/"_s) && !isPhotoFormat(kind.sliced(6).toLatin1()))
        return {.failure = Failure{Fault::OtherFormat, path, {}, u"it is of the type "_s + kind}};
    return unfit(path, u"it is no picture that is known here"_s);
}

bool isTooLarge(QSize size, QImage::Format format)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    const int bits = std::max<int>(32, QImage::toPixelFormat(format).bitsPerPixel());
    return pixels > mostPixels || pixels > mostBytes * 8 / bits;
}

QImage scaled(const QImage& image, QSize size)
{
    return image.size() == size ? image : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QByteArray jpegBytes(const QImage& image, int quality)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpg");
    writer.setQuality(std::clamp(quality, lowestQuality, highestQuality));
    return writer.write(image) ? buffer.data() : QByteArray();
}

} // namespace

LoadedPicture loadPicture(const QString& path, QSize wanted, const std::stop_token& stop)
{
    if (const auto failure = checkSource(path))
        return {.failure = failure};
    StoppableFile file(path, stop);
    if (!file.open(QIODevice::ReadOnly))
        return {.failure = Failure{Fault::NotReadable, path, {}, file.errorString()}};
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true); // an ending may be wrong
    reader.setAutoTransform(true);           // as the EXIF data of a camera says
    static std::once_flag isLimited;         // the toolkit has one limit for all readers
    std::call_once(isLimited, [] { QImageReader::setAllocationLimit(mostMegabytes); });
    const QSize size = reader.size();
    if (!reader.canRead() || size.isEmpty() || !isPhotoFormat(reader.format()))
        return unknown(path);
    if (isTooLarge(size, reader.imageFormat()))
        return {.failure = Failure{
                    Fault::LargePicture, path, {}, u"%1 x %2"_s.arg(size.width()).arg(size.height())}};
    if (endsEarly(path, reader.format()))
        return unfit(path, u"it ends early"_s);
    const bool isTurned = reader.transformation().testFlag(QImageIOHandler::TransformationRotate90);
    reader.setScaledSize(readingSize(size, isTurned ? wanted.transposed() : wanted));
    const QImage image = reader.read();
    if (stop.stop_requested()) // some readers fill what is missing
        return {.failure = Failure{Fault::Cancelled, path}};
    if (image.isNull())
        return unfit(path, reader.errorString());
    return {.image = onWhite(image), .original = isTurned ? size.transposed() : size};
}

QImage fitted(const QImage& image, QSize size, Fit fit)
{
    if (image.isNull() || size.isEmpty())
        return {};
    if (fit == Fit::Crop)
        return scaled(image.copy(middle(image.size(), size)), size);
    if (fit == Fit::Stretch)
        return scaled(image, size);
    QImage whole(size, QImage::Format_RGB32);
    whole.fill(Qt::white);
    const QSize inner = image.size().scaled(size, Qt::KeepAspectRatio).expandedTo({1, 1});
    QPainter painter(&whole);
    painter.drawImage((size.width() - inner.width()) / 2, (size.height() - inner.height()) / 2,
                      scaled(image, inner));
    return whole;
}

QByteArray pictureBytes(const QImage& picture, const PictureForm& form)
{
    const QImage image = fitted(picture, form.size, form.fit);
    return form.asJpeg ? jpegBytes(image, form.quality) : bitmapFile(image, form.depth);
}

qint32 SaveBitmapToBmp(const QImage& picture, const QString& path, int depth)
{
    const QByteArray bytes = bitmapFile(picture, depth);
    if (bytes.isEmpty())
        return -2;
    return app::writeWholeFile(path, bytes) ? 1 : -1;
}

std::optional<Failure> ConvertBmpToJpg(const QString& source, const QString& target, int& quality)
{
    quality = std::clamp(quality, lowestQuality, highestQuality);
    app::DeleteQuiet(target);
    if (!app::FileExists(source))
        return Failure{Fault::NoBitmap, source};
    const QImage image(source);
    const QByteArray bytes = image.isNull() ? QByteArray() : jpegBytes(image, quality);
    if (bytes.isEmpty())
        return Failure{Fault::NoJpeg, source};
    QString reason;
    if (!app::writeWholeFile(target, bytes, &reason))
        return Failure{Fault::NoJpeg, source, {}, reason};
    return {};
}

} // namespace kalmo::media
