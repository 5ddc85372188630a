#include "phonedata/IrmcAnswers.h"

#include "app/CodePage.h"
#include "app/mdlKonverter.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr char applicationParameters = 0x4C;
constexpr qsizetype headSize = 3;    // of the header
constexpr qsizetype firstTagEnd = 4; // after head and tag

/// The number after a key, up to the end of the line; held within 16 bits.
std::optional<qint16> numberBehind(const QString& text, const QString& key)
{
    const qsizetype found = text.indexOf(key);
    if (found < 0)
        return std::nullopt;
    const qsizetype start = found + key.size();
    const qsizetype end = text.indexOf(u"\r\n"_s, start);
    const qint32 number = app::ValInt(QStringView(text).sliced(start, (end < 0 ? text.size() : end) - start));
    using Limits = std::numeric_limits<qint16>;
    return static_cast<qint16>(std::clamp<qint32>(number, Limits::min(), Limits::max()));
}

/// One length byte, and that many bytes after it, or as many as there are.
QByteArray lengthPrefixed(const QByteArray& bytes, qsizetype at)
{
    return at < bytes.size() ? bytes.mid(at + 1, static_cast<uchar>(bytes[at])) : QByteArray();
}

} // namespace

std::optional<tVcfInfo> parseInfoLog(const QByteArray& bytes)
{
    const QString text = app::fromCp1252(bytes);
    const auto capacity = numberBehind(text, u"Maximum-Records:"_s);
    const auto used = numberBehind(text, u"Total-Records:"_s);
    if (!capacity || !used)
        return std::nullopt;
    return tVcfInfo{*capacity, *used};
}

std::optional<LuidAnswer> parseLuidAnswer(const QByteArray& payload)
{
    if (payload.size() < headSize || payload[0] != applicationParameters ||
        qFromBigEndian<quint16>(payload.constData() + 1) != payload.size())
        return std::nullopt;
    const QByteArray luid = lengthPrefixed(payload, firstTagEnd);
    const qsizetype counterLength = firstTagEnd + 1 + luid.size() + 1;
    const QByteArray counter = lengthPrefixed(payload, counterLength);
    return LuidAnswer{app::fromCp1252(luid), app::ValInt(app::fromCp1252(counter))};
}

} // namespace kalmo::phonedata
