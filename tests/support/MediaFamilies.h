#pragma once

#include "support/Rows.h"
#include "support/Tones.h"

#include <QString>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// A model of each family that takes pictures, with the form of its picture and its clip picture as formOf()
/// gives it. The last column is true if it takes sounds, false if it takes melodies.
inline const Rows<QString, QString, QString, bool> mediaFamilies{
    {"5", u"S68H"_s, u"BMP 128x160 24"_s, u"BMP 128x100 24"_s, false},
    {"6", u"SL37"_s, u"BMP 128x160 24"_s, u"BMP 128x100 24"_s, false},
    {"8", u"SL78H"_s, u"JPEG 240x320"_s, u"JPEG 40x40"_s, true},
    {"9", u"S79H"_s, u"JPEG 128x160"_s, u"JPEG 128x86"_s, true},
    {"10", u"SL400H"_s, u"JPEG 128x160"_s, u"JPEG 128x86"_s, true},
    {"11", u"S850H"_s, u"JPEG 128x160"_s, u"JPEG 128x86"_s, true},
    {"12", u"S820"_s, u"JPEG 240x320"_s, u"JPEG 240x160"_s, true},
    {"13", u"CL660H"_s, u"JPEG 240x320"_s, u"JPEG 240x172"_s, true},
};

/// A picture of so many pixels in one colour: a BMP file of 24 bits.
inline QByteArray picture(int width, int height)
{
    const int row = (3 * width + 3) / 4 * 4;
    const auto bytes = static_cast<quint32>(row * height);
    return "BM" + little(54 + bytes, 4) + little(0, 4) + little(54, 4) + little(40, 4) +
           little(static_cast<quint32>(width), 4) + little(static_cast<quint32>(height), 4) + little(1, 2) +
           little(24, 2) + little(0, 4) + little(bytes, 4) + little(0, 8) + little(0, 8) +
           QByteArray(static_cast<qsizetype>(bytes), '\x80');
}

/// "JPEG 240x320" or "BMP 128x160 24", from the head of a file.
inline QString formOf(const QByteArray& bytes)
{
    const auto number = [&bytes](qsizetype at) {
        return QString::number(static_cast<uchar>(bytes[at]) << 8 | static_cast<uchar>(bytes[at + 1]));
    };
    if (bytes.startsWith("BM")) {
        const auto at = [&bytes](qsizetype index) {
            return QString::number(static_cast<uchar>(bytes[index]) | static_cast<uchar>(bytes[index + 1])
                                                                          << 8);
        };
        return u"BMP %1x%2 %3"_s.arg(at(18), at(22), at(28));
    }
    const qsizetype frame = bytes.indexOf("\xFF\xC0");
    return bytes.startsWith("\xFF\xD8") && frame > 0
               ? u"JPEG %1x%2"_s.arg(number(frame + 7), number(frame + 5))
               : QString();
}

} // namespace kalmo::tests
