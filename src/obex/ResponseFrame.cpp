#include "obex/ResponseFrame.h"

#include "obex/ObexFrames.h"

#include <QtEndian>

namespace kalmo::obex {

namespace {

constexpr qsizetype headSize = 3; // of a header that has a length
constexpr qsizetype lengthHeaderSize = 5;
constexpr qsizetype connectAnswerSize = 4; // version, flags, largest frame

int byteAt(const QByteArray& bytes, qsizetype index)
{
    return index < bytes.size() ? static_cast<uchar>(bytes[index]) : 0;
}

qint16 declaredLength(const QByteArray& buffer)
{
    return qFromBigEndian<qint16>(buffer.constData() + 1);
}

} // namespace

bool isWholeFrame(const QByteArray& buffer)
{
    return buffer.size() >= responseHeadSize && buffer.size() >= declaredLength(buffer);
}

ResponseFrame takeFrame(QByteArray buffer)
{
    Q_ASSERT(isWholeFrame(buffer));
    ResponseFrame frame{byteAt(buffer, 0), {}, declaredLength(buffer) >= responseHeadSize};
    frame.payload = std::move(buffer.remove(0, responseHeadSize));
    return frame;
}

LeadingHeader takeLeadingHeader(QByteArray& payload)
{
    LeadingHeader leading;
    switch (byteAt(payload, 0)) {
    case HeaderId::Body:
    case HeaderId::EndOfBody:
    case HeaderId::ApplicationParameters:
        payload.remove(0, headSize);
        break;
    case HeaderId::Length:
        if (payload.size() >= lengthHeaderSize)
            leading.totalSize = qFromBigEndian<quint32>(payload.constData() + 1);
        payload.remove(0, lengthHeaderSize);
        leading.endOfBodyBehindLength = byteAt(payload, 0) == HeaderId::EndOfBody;
        if (leading.endOfBodyBehindLength || byteAt(payload, 0) == HeaderId::Body)
            payload.remove(0, headSize);
        break;
    default:
        break;
    }
    return leading;
}

quint16 readMaxPacket(const QByteArray& payload)
{
    return static_cast<quint16>(byteAt(payload, 2) << 8 | byteAt(payload, 3));
}

bool isConnectAnswer(const QByteArray& payload)
{
    constexpr int majorVersion = 1; // no header begins with such a byte
    return payload.size() >= connectAnswerSize && byteAt(payload, 0) >> 4 == majorVersion;
}

qint32 readSpaceAnswer(const QByteArray& payload)
{
    return HexToLong(StrToHex(payload.mid(2)));
}

} // namespace kalmo::obex
