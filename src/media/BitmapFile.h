#pragma once

#include <QImage>

namespace kalmo::media {

/// Bytes of a Windows BMP file with a 40-byte BITMAPINFOHEADER and plain rows of 24 or 32 bits a pixel, the
/// lowest row first. Empty for other depths and for no picture.
QByteArray bitmapFile(const QImage& picture, int depth);

} // namespace kalmo::media
