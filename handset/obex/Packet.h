#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QtEndian>

#include <optional>
#include <vector>

namespace kalmo::handset {

/// Opcodes, response codes and header identifiers as the OBEX standard has them (IrOBEX 1.3, 3.3 and 2.1).
namespace obex {
enum Opcode : quint8 {
    Connect = 0x80,
    Disconnect = 0x81,
    Put = 0x02,
    Get = 0x03,
    SetPath = 0x85,
    Abort = 0xFF,
    FinalBit = 0x80,
};
enum Code : quint8 {
    Continue = 0x90,
    Success = 0xA0,
    BadRequest = 0xC0,
    Forbidden = 0xC3,
    NotFound = 0xC4,
    Conflict = 0xC9,
    PreconditionFailed = 0xCC,
    TooLarge = 0xCD,
    InternalError = 0xD0,
    NotImplemented = 0xD1,
    DatabaseFull = 0xE0,
};
enum Header : quint8 {
    Name = 0x01,
    Type = 0x42,
    Time = 0x44,
    Target = 0x46,
    Body = 0x48,
    EndOfBody = 0x49,
    Who = 0x4A,
    Parameters = 0x4C,
    Length = 0xC3,
    ConnectionId = 0xCB,
};
} // namespace obex

struct ObexHeader
{
    quint8 id = 0;
    QByteArray value = {};
};

/// A request, parsed.
struct ObexPacket
{
    quint8 opcode = 0;
    qsizetype size = 0;    ///< bytes of the whole frame
    QByteArray fixed = {}; ///< the bytes before the headers: four of CONNECT, two of SETPATH
    std::vector<ObexHeader> headers = {};
    QStringList faults = {}; ///< faults of the frame itself

    const ObexHeader* find(quint8 id) const;
    bool has(quint8 id) const { return find(id) != nullptr; }
    QByteArray value(quint8 id) const;
    /// The name as text; nothing if there is no such header. The header's 16-bit characters come high byte
    /// first, and the zero at their end may be missing.
    std::optional<QString> name() const;
    quint32 number(quint8 id) const;
};

/// Bytes of a number of 8, 16 or 32 bits, high byte first.
template <typename Number>
QByteArray bigEndian(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// Bytes that a frame declares to have; 0 while fewer than three are known.
qsizetype declaredSize(const QByteArray& bytes);

/// Parses one whole frame. Any content gives a request; `faults` holds the errors.
ObexPacket parsePacket(const QByteArray& frame);

/// A header with its length, and one that has a number for its value.
QByteArray header(quint8 id, const QByteArray& value);
QByteArray header(quint8 id, quint32 number);
/// A frame: code, length, the bytes before the headers, headers.
QByteArray frame(quint8 code, const QByteArray& rest = {});

/// 16-bit characters, high byte first, without the zeros at the end.
QString fromUtf16(const QByteArray& bytes);

/// One value of the header Parameters.
struct ObexParameter
{
    quint8 tag = 0;
    QByteArray value = {};
};

/// Tags that the handsets know.
enum ObexTag : quint8 {
    TagLuid = 0x01,
    TagCounter = 0x02,
    TagExpectedCounter = 0x11,
    TagMemory = 0x32,
    TagCommand = 0x34,
    TagFrom = 0x35,
    TagTo = 0x36,
    TagPermissions = 0x38,
};

/// Parses the header's value. Two of the requests declare wrong lengths by protocol: a memory query for the
/// card, and permissions. A wrong length in any other is added to `faults`.
std::vector<ObexParameter> parseParameters(const QByteArray& value, QStringList& faults);

QByteArray parameter(quint8 tag, const QByteArray& value);

} // namespace kalmo::handset
