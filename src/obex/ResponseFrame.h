#pragma once

#include <QByteArray>

#include <optional>

namespace kalmo::obex {

inline constexpr int responseHeadSize = 3; ///< code and length

/// One response of the phone.
struct ResponseFrame
{
    int code = 0;
    QByteArray payload;        ///< all bytes after the head, also those beyond the declared length
    bool lengthIsSound = true; ///< false if the declared length is below that of the head
};

/// Returns true if `buffer` holds a whole response. The length is a 16-bit number with a sign, so a length
/// below 3 or above 32767 is reached with the head alone. Such a frame ends with the bytes that have come by
/// then, and its later bytes have to be discarded.
bool isWholeFrame(const QByteArray& buffer);

/// Cuts a whole response.
ResponseFrame takeFrame(QByteArray buffer);

/// Content of a leading header.
struct LeadingHeader
{
    std::optional<quint32> totalSize; ///< value of a Length header
    bool endOfBodyBehindLength = false;
};

/// Takes the leading header off the payload of a GET's response: of Body, End of Body and Application
/// Parameters the head, of Length the whole header and the head of a Body after it. Any other header stays.
/// The bytes after the leading header are data.
LeadingHeader takeLeadingHeader(QByteArray& payload);

/// Largest frame that the phone takes, in bytes, from the response to a connect. 0 if it is missing.
quint16 readMaxPacket(const QByteArray& payload);
/// Returns true if a payload can be that of the response to a connect: it alone begins with the version of
/// the protocol.
bool isConnectAnswer(const QByteArray& payload);

/// Number in the application parameters of a response, after tag and length.
qint32 readSpaceAnswer(const QByteArray& payload);

} // namespace kalmo::obex
