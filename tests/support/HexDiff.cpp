#include "support/HexDiff.h"

#include <algorithm>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype rowSize = 16;

QString dumpRow(QStringView label, const QByteArray& bytes, qsizetype start)
{
    const QByteArray row = bytes.mid(start, rowSize);
    QString printable;
    for (const char byte : row)
        printable += byte >= ' ' && byte <= '~' ? QChar::fromLatin1(byte) : u'.';
    return u"%1 %2  %3  %4\n"_s.arg(label, -6)
        .arg(start, 4, 16, QChar(u'0'))
        .arg(QString::fromLatin1(row.toHex(' ').toUpper()), -47)
        .arg(printable);
}

} // namespace

QString hexDiff(const QByteArray& wanted, const QByteArray& came)
{
    if (wanted == came)
        return {};
    const auto differing = std::mismatch(wanted.begin(), wanted.end(), came.begin(), came.end());
    const qsizetype place = differing.first - wanted.begin();
    const qsizetype row = place / rowSize * rowSize;
    const qsizetype start = std::max<qsizetype>(row - rowSize, 0);
    QString text = u"%1 bytes wanted, %2 came, different from byte %3 on\n"_s.arg(wanted.size())
                       .arg(came.size())
                       .arg(place);
    for (qsizetype at = start; at <= row; at += rowSize)
        text += dumpRow(u"wanted", wanted, at) + dumpRow(u"came", came, at);
    return text + u"^^\n"_s.rightJustified(13 + (place - row) * 3 + 3);
}

} // namespace kalmo::tests
