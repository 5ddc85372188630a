#include "media/PictureEnd.h"

#include <QFile>
#include <QtEndian>

namespace kalmo::media {

namespace {

constexpr qint64 longestFile = 128LL << 20; // bytes; more than any photo takes
constexpr qsizetype bitmapHead = 34;        // bytes up to the size of the pixels

template <typename Number>
qint64 numberAt(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

int byteAt(const QByteArray& bytes, qsizetype at)
{
    return static_cast<quint8>(bytes[at]);
}

/// The bytes from the start of a BMP file to the end of its pixels, 0 where the head does not say.
qint64 neededForBitmap(const QByteArray& head)
{
    constexpr qint64 longHeader = 40; // bytes; an older header has 12
    if (head.size() < bitmapHead + 4 || numberAt<quint32>(head, 14) < longHeader)
        return 0;
    const qint64 pixelsAt = numberAt<quint32>(head, 10);
    const qint64 width = numberAt<qint32>(head, 18);
    const qint64 height = std::abs(numberAt<qint32>(head, 22));
    const qint64 bits = numberAt<quint16>(head, 28);
    const qint64 compression = numberAt<quint32>(head, 30);
    if (compression == 1 || compression == 2) // runs of one colour
        return pixelsAt + numberAt<quint32>(head, bitmapHead);
    const qint64 row = (width * bits + 31) / 32 * 4;
    const qint64 lastRow = (width * bits + 7) / 8; // some programs leave its padding out
    return height == 0 ? 0 : pixelsAt + row * (height - 1) + lastRow;
}

/// Goes from marker to marker up to the one for the end. Pictures within segments, as for a preview, are
/// passed over.
bool hasJpegEnd(const QByteArray& bytes)
{
    constexpr int endOfImage = 0xD9;
    constexpr int startOfImage = 0xD8;
    constexpr int firstRestart = 0xD0; // up to the start of the image they have no segment
    for (qsizetype at = 0; (at = bytes.indexOf('\xFF', at)) >= 0 && at + 1 < bytes.size();) {
        const int marker = byteAt(bytes, at + 1);
        if (marker == endOfImage)
            return true;
        if (marker == 0xFF) {
            ++at; // a byte to fill up
        } else if (marker <= 1 || (marker >= firstRestart && marker <= startOfImage)) {
            at += 2; // 00 belongs to the pixels
        } else {
            if (at + 4 > bytes.size())
                return false;
            at += 2 + qFromBigEndian<quint16>(bytes.constData() + at + 2);
        }
    }
    return false;
}

/// Bytes of a table of colours, by the flags ahead of it.
qsizetype colourBytes(int flags)
{
    return (flags & 0x80) != 0 ? 3 << ((flags & 7) + 1) : 0;
}

/// Goes from block to block up to the end of the first frame.
bool hasGifFrame(const QByteArray& bytes)
{
    constexpr qsizetype head = 13;
    constexpr qsizetype frameHead = 10;
    if (bytes.size() < head)
        return false;
    qsizetype at = head + colourBytes(byteAt(bytes, head - 3));
    while (at + frameHead < bytes.size()) {
        const bool isFrame = bytes[at] == ',';
        if (!isFrame && bytes[at] != '!')
            return false;
        at += isFrame ? frameHead + colourBytes(byteAt(bytes, at + frameHead - 1)) + 1 : 2;
        while (at < bytes.size() && bytes[at] != '\0')
            at += 1 + byteAt(bytes, at);
        if (isFrame)
            return at < bytes.size();
        ++at;
    }
    return false;
}

} // namespace

bool endsEarly(const QString& path, const QByteArray& format)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false; // the reader has read it
    if (format == "bmp")
        return file.size() < neededForBitmap(file.read(bitmapHead + 4));
    if (format == "gif")
        return !hasGifFrame(file.read(longestFile));
    return (format == "jpeg" || format == "jpg") && !hasJpegEnd(file.read(longestFile));
}

} // namespace kalmo::media
