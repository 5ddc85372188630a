#pragma once

#include "media/Failure.h"
#include "media/UploadRules.h"

#include <QImage>
#include <QSize>

namespace kalmo::media {

/// A picture in memory, or what was wrong with its file.
struct LoadedPicture
{
    QImage image = {};   ///< upright, without transparency, 32 bits; no larger than it is good for
    QSize original = {}; ///< pixels in the file, upright
    std::optional<Failure> failure = {};
};

/// Reads a picture that is to become `wanted` pixels. A large one is scaled while it is read; the first frame
/// counts. May run beside the event loop.
LoadedPicture loadPicture(const QString& path, QSize wanted);

/// The picture in that size, whatever its shape.
QImage fitted(const QImage& image, QSize size, Fit fit);

/// Writes a Windows BMP file without compression. 1 for success; -1 if the file can't be written, -2 for a
/// depth other than 24 and 32 bits.
qint32 SaveBitmapToBmp(const QImage& picture, const QString& path, int depth);

/// Makes a JPEG file of a BMP file. `quality` is held between 10 and 100. What went wrong, and then the old
/// target has gone; nothing for success.
std::optional<Failure> ConvertBmpToJpg(const QString& source, const QString& target, int& quality);

/// Bytes of a JPEG file, empty if the picture can't be coded.
QByteArray jpegBytes(const QImage& image, int quality);

} // namespace kalmo::media
