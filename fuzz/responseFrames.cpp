// Fuzzes OBEX responses.

#include "fuzz/Targets.h"

#include "obex/ResponseFrame.h"

namespace kalmo::fuzz {

void responseFrames(const QByteArray& bytes)
{
    if (!obex::isWholeFrame(bytes)) {
        require(bytes.size() < obex::responseHeadSize || bytes.size() < 0x8000);
        return;
    }
    const obex::ResponseFrame frame = obex::takeFrame(bytes);
    require(frame.payload.size() == bytes.size() - obex::responseHeadSize);
    QByteArray payload = frame.payload;
    obex::takeLeadingHeader(payload);
    require(frame.payload.endsWith(payload)); // nothing but the front is taken off
    obex::readMaxPacket(frame.payload);
    obex::readSpaceAnswer(payload);
}

} // namespace kalmo::fuzz
