#include "phonedata/RawReplies.h"

namespace kalmo::phonedata {

QByteArray repliesBytes(const QByteArrayList& replies)
{
    QByteArray bytes;
    for (const QByteArray& reply : replies)
        bytes += QByteArray::number(reply.size()) + ':' + reply + '\n';
    return bytes;
}

std::optional<QByteArrayList> repliesFrom(const QByteArray& bytes)
{
    QByteArrayList replies;
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype colon = bytes.indexOf(':', at);
        bool isNumber = false;
        const qsizetype length = bytes.mid(at, std::max<qsizetype>(colon - at, 0)).toLongLong(&isNumber);
        const qsizetype start = colon + 1;
        const bool isWhole = colon >= 0 && isNumber && length >= 0 && length < bytes.size() - start;
        if (!isWhole || bytes[start + length] != '\n')
            return std::nullopt;
        replies.append(bytes.mid(start, length));
        at = start + length + 1;
    }
    return replies;
}

} // namespace kalmo::phonedata
