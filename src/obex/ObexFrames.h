#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace kalmo::obex {

/// Requests as the phones expect them, to the byte: after OBEX 1.x of the Infrared Data Association, with the
/// phones' own forms where they differ. All numbers are big-endian. Nothing here sends anything.

/// The service that a connection is made to.
enum class Target {
    FlexMemory = 0, ///< folder browsing: the file system and its capacities
    IrMC = 1,       ///< the objects under "telecom" for writing and deleting
};

struct HeaderId
{
    enum Value : uchar {
        Name = 0x01,
        Type = 0x42,
        Time = 0x44,
        TargetId = 0x46,
        Body = 0x48,
        EndOfBody = 0x49,
        ApplicationParameters = 0x4C,
        Length = 0xC3,
    };
};

enum class Memory { Phone, Card };
enum class Space { Total = 1, Free = 2 };

inline constexpr int smallestPacket = 255;  ///< bytes of a frame; no side may announce less
inline constexpr int largestPacket = 10000; ///< the most that one send takes

inline constexpr int mostPathBytes = 255; ///< limit of the one-byte length of a path in a rename frame

/// The size of `data` plus `add` as two bytes. Of a larger number only the low 16 bits are used.
QByteArray LenBE16(const QByteArray& data, int add);
/// Does the same with four bytes.
QByteArray LenBE32(const QByteArray& data, int add);

/// Each byte as two upper-case hex digits.
QString StrToHex(const QByteArray& bytes);
/// Value of a hex text of any length. A value beyond 32 bits with a sign becomes the largest one.
qint32 HexToLong(const QString& hex);

/// Local time as "20021120T164606". Kept on purpose: the day has no leading zero, so that on days 1 to 9 the
/// text is one short.
QByteArray ObxTimeStamp(const QDateTime& moment);

/// Returns true if the phone gets a name or a path unchanged. The name bytes turn a character beyond U+00FF
/// into another one.
bool fitsNameBytes(const QString& name);

/// The characters as UTF-16 little-endian and one 00. The Name header puts another 00 before them, so that
/// characters up to U+00FF read as big-endian. Others have this shifted order on purpose.
QByteArray nameBytes(const QString& name);

QByteArray nameHeader(const QString& name);
QByteArray lengthHeader(const QByteArray& object);
QByteArray timeHeader(const QDateTime& moment);
QByteArray applicationHeader(const QByteArray& parameters);

QByteArray connectFrame(Target target);
QByteArray disconnectFrame();
QByteArray abortFrame();
QByteArray folderListingFrame();
QByteArray nextPartFrame(); ///< asks for the next part of a GET
QByteArray getFrame(const QString& name);
QByteArray rootFrame();
QByteArray oneLevelUpFrame();
QByteArray enterFolderFrame(const QString& name, bool allowCreation);
QByteArray deleteFrame(const QString& name);
/// `text` as in "RWD""R" with its quotes. Kept on purpose: its length is always given as 8.
QByteArray setAttribFrame(const QString& name, const QByteArray& text);
/// A path for a rename frame, given from the root with "/" between its parts. At most `mostPathBytes` of it
/// can be sent.
QByteArray renamePath(const QString& path);
QByteArray renameFrame(const QByteArray& oldPath, const QByteArray& newPath);
/// Kept on purpose: the card's path is announced one byte longer than it is, as the phones expect it.
QByteArray spaceFrame(Memory memory, Space space);

/// The change counter that a write or delete of an IrMC object expects, as application parameters.
QByteArray counterParameters(qint32 counter);
QByteArray irmcDeleteFrame(const QString& name, qint32 counter);

/// One frame of a PUT: headers, then a chunk of the object as Body, or as End of Body in the final frame.
QByteArray putFrame(bool isFinal, const QByteArray& headers, QByteArrayView chunk);

} // namespace kalmo::obex
