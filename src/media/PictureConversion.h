#pragma once

#include "media/Failure.h"
#include "media/UploadRules.h"

#include <QImage>
#include <QSize>

#include <stop_token>

namespace kalmo::media {

/// A picture in memory, or the failure to read it.
struct LoadedPicture
{
    QImage image = {}; ///< upright, without transparency, 32 bits; large enough for the size that was wanted
    QSize original = {}; ///< pixels in the file, upright
    std::optional<Failure> failure = {};
};

/// Reads the first frame of a picture for a result of `wanted` pixels. Scales a large picture while it reads,
/// to at most 25 million pixels. May run in a thread of its own; fails soon after a stop is requested.
LoadedPicture loadPicture(const QString& path, QSize wanted, const std::stop_token& stop = {});

/// The picture in that size. `fit` decides on a picture of another shape.
QImage fitted(const QImage& image, QSize size, Fit fit);

/// The file of a picture in that form, empty if it can't be coded.
QByteArray pictureBytes(const QImage& picture, const PictureForm& form);

/// Writes a Windows BMP file without compression. 1 for success; -1 if the file can't be written, -2 for a
/// depth other than 24 and 32 bits. Part of the described interface.
qint32 SaveBitmapToBmp(const QImage& picture, const QString& path, int depth);

/// Converts a BMP file to a JPEG file. Holds `quality` between 10 and 100. Returns the failure, and then the
/// old target is deleted; nothing for success. Part of the described interface.
std::optional<Failure> ConvertBmpToJpg(const QString& source, const QString& target, int& quality);

} // namespace kalmo::media
