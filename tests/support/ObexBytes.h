#pragma once

#include <QByteArray>

namespace kalmo::tests {

/// Bytes as they are written in hex.
inline QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

inline QByteArray big16(qsizetype number)
{
    return QByteArray(1, static_cast<char>(number >> 8)) + static_cast<char>(number);
}

/// A packet of either side: opcode or code, its length, and the rest.
inline QByteArray packet(int code, const QByteArray& rest = {})
{
    return static_cast<char>(code) + big16(rest.size() + 3) + rest;
}

/// A Body header (48) or End of Body header (49), or another with a two-byte length.
inline QByteArray header(int id, const QByteArray& value)
{
    return packet(id, value); // the same form: one byte, length of the whole, value
}

/// The response to a request that succeeded, without headers.
inline const QByteArray done = packet(0xA0, {});

/// Header of a name in letters of Latin-1.
inline QByteArray nameHeader(const QByteArray& name)
{
    QByteArray wide;
    for (const char letter : name)
        wide += QByteArray(1, '\0') + letter;
    return header(0x01, wide + QByteArray(2, '\0'));
}

/// Header of an object's length.
inline QByteArray lengthHeader(qsizetype length)
{
    return '\xC3' + big16(length >> 16) + big16(length & 0xFFFF);
}

inline const QByteArray connectFolders = hex("80 001A 10 00 4006 46 0013 6B01CB31410611D49A770050DA3F471F");
inline const QByteArray connectIrmc = hex("80 0013 10 00 4006 46 000C") + "IRMC-SYNC";
inline const QByteArray toRoot = hex("85 0008 02 00 01 0003");
inline const QByteArray listFolder = packet(0x83, header(0x42, QByteArray("x-obex/folder-listing\0", 22)));

} // namespace kalmo::tests
