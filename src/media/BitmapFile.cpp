#include "media/BitmapFile.h"

#include <QtEndian>

namespace kalmo::media {

namespace {

constexpr quint32 fileHeader = 14; // bytes
constexpr quint32 infoHeader = 40;
constexpr quint32 dotsPerMetre = 2835; // 72 dpi
constexpr int rowUnit = 4;             // rows end at a multiple of so many bytes

template <typename Number>
void append(QByteArray& bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

QByteArray headers(QSize size, int depth, quint32 pixelBytes)
{
    QByteArray bytes = "BM";
    append<quint32>(bytes, fileHeader + infoHeader + pixelBytes);
    append<quint32>(bytes, 0);
    append<quint32>(bytes, fileHeader + infoHeader);
    append<quint32>(bytes, infoHeader);
    append<qint32>(bytes, size.width());
    append<qint32>(bytes, size.height());
    append<quint16>(bytes, 1); // planes
    append<quint16>(bytes, static_cast<quint16>(depth));
    append<quint32>(bytes, 0); // no compression
    append<quint32>(bytes, pixelBytes);
    append<quint32>(bytes, dotsPerMetre);
    append<quint32>(bytes, dotsPerMetre);
    append<quint32>(bytes, 0); // no palette
    append<quint32>(bytes, 0);
    return bytes;
}

} // namespace

QByteArray bitmapFile(const QImage& picture, int depth)
{
    if ((depth != 24 && depth != 32) || picture.isNull())
        return {};
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    const int rowBytes = (image.width() * depth / 8 + rowUnit - 1) / rowUnit * rowUnit;
    QByteArray bytes = headers(image.size(), depth, static_cast<quint32>(rowBytes * image.height()));
    bytes.reserve(bytes.size() + qsizetype{rowBytes} * image.height());
    for (int y = image.height() - 1; y >= 0; --y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        const qsizetype end = bytes.size() + rowBytes;
        for (int x = 0; x < image.width(); ++x) {
            bytes.append(static_cast<char>(qBlue(row[x])));
            bytes.append(static_cast<char>(qGreen(row[x])));
            bytes.append(static_cast<char>(qRed(row[x])));
            if (depth == 32)
                bytes.append('\0');
        }
        bytes.resize(end, '\0');
    }
    return bytes;
}

} // namespace kalmo::media
