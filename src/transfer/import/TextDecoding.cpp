#include "transfer/import/TextDecoding.h"

#include "app/CodePage.h"

#include <QStringDecoder>

#include <algorithm>

namespace kalmo::transfer {

namespace {

constexpr QByteArrayView utf8Mark("\xEF\xBB\xBF");
constexpr QByteArrayView littleEndianMark("\xFF\xFE");
constexpr QByteArrayView bigEndianMark("\xFE\xFF");

bool hasUtf16Mark(QByteArrayView bytes)
{
    return bytes.startsWith(littleEndianMark) || bytes.startsWith(bigEndianMark);
}

QString decodedBy(QStringDecoder::Encoding encoding, QByteArrayView bytes)
{
    QStringDecoder decoder(encoding, QStringDecoder::Flag::Stateless);
    return QString(decoder(bytes)).normalized(QString::NormalizationForm_C);
}

} // namespace

Encoding detectEncoding(QByteArrayView bytes)
{
    if (hasUtf16Mark(bytes))
        return Encoding::Utf16;
    if (bytes.startsWith(utf8Mark))
        return Encoding::Utf8;
    const bool isAscii = std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= 0; });
    return !isAscii && bytes.isValidUtf8() ? Encoding::Utf8 : Encoding::Ansi;
}

QString decodeText(QByteArrayView bytes, Encoding encoding)
{
    switch (encoding) {
    case Encoding::Ansi:
        break;
    case Encoding::Utf8:
        return decodedBy(QStringDecoder::Utf8,
                         bytes.sliced(bytes.startsWith(utf8Mark) ? utf8Mark.size() : 0));
    case Encoding::Utf16:
        return decodedBy(bytes.startsWith(bigEndianMark) ? QStringDecoder::Utf16BE : QStringDecoder::Utf16LE,
                         bytes.sliced(hasUtf16Mark(bytes) ? littleEndianMark.size() : 0));
    }
    return app::fromCp1252(bytes);
}

bool isBinary(QByteArrayView bytes, Encoding encoding)
{
    return encoding != Encoding::Utf16 && !hasUtf16Mark(bytes) && bytes.contains('\0');
}

bool looksLikeUtf16(QByteArrayView bytes)
{
    constexpr qsizetype fewestUnits = 4;
    constexpr qsizetype mostUnits = 100;
    const qsizetype units = std::min(bytes.size() / 2, mostUnits);
    qsizetype first = 0;
    qsizetype second = 0;
    for (qsizetype unit = 0; unit < units; ++unit) {
        first += bytes[2 * unit] == '\0' ? 1 : 0;
        second += bytes[2 * unit + 1] == '\0' ? 1 : 0;
    }
    // Letters beyond Latin 1 have no NUL; they are rare where a table begins.
    return units >= fewestUnits && std::min(first, second) == 0 && std::max(first, second) * 4 >= units * 3;
}

} // namespace kalmo::transfer
