#pragma once

#include <QByteArray>

#include <optional>

namespace kalmo::obex {

inline constexpr int responseHeadSize = 3; ///< code and length

/// One response of the phone.
struct ResponseFrame
{
    int code = 0;
    QByteArray payload; ///< all that was received behind the head, bytes beyond the declared length included
    bool lengthIsSound = true; ///< false for a declared length below that of the head
};

/// Whether `buffer` holds a whole response. The length is a 16-bit number with a sign, so that one below 3 or
/// above 32767 is reached as soon as the head is there: such a frame ends with what has come by then, and
/// what comes of it later has to be thrown away.
bool isWholeFrame(const QByteArray& buffer);

/// Cuts a whole response.
ResponseFrame takeFrame(QByteArray buffer);

/// What a leading header said.
struct LeadingHeader
{
    std::optional<quint32> totalSize; ///< value of a Length header
    bool endOfBodyBehindLength = false;
};

/// Takes the leading header off the payload of a GET's response: of Body, End of Body and Application
/// Parameters the head, of Length all of it together with the head of a Body behind it. Any other header
/// stays, and what follows the leading one is data.
LeadingHeader takeLeadingHeader(QByteArray& payload);

/// Largest frame that the phone takes, in bytes, as the response to a connect says it; 0 for what is missing.
quint16 readMaxPacket(const QByteArray& payload);
/// Whether a payload can be that of the response to a connect: it alone begins with the version of the
/// protocol.
bool isConnectAnswer(const QByteArray& payload);

/// Number in the application parameters of a response, behind tag and length.
qint32 readSpaceAnswer(const QByteArray& payload);

} // namespace kalmo::obex
