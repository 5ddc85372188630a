#include "app/mdlKonverter.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace kalmo::app {

using namespace Qt::StringLiterals;

QString HexFromText(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return {};
    return u' ' + QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QString HexFromTextPlain(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex().toUpper());
}

QByteArray TextFromHex(const QString& hex)
{
    QByteArray bytes;
    QStringView rest = hex;
    while (rest.size() >= 2) {
        bytes.append(static_cast<char>(rest.first(2).toUShort(nullptr, 16)));
        rest = rest.sliced(2).trimmed();
    }
    return bytes;
}

QString FormatSizeKB(qint64 bytes)
{
    double kilobytes = std::round(bytes / 1024.0 * 10) / 10;
    if (bytes > 0 && kilobytes < 0.1)
        kilobytes += 0.1;
    return QLocale().toString(kilobytes, 'f', 1) + u"kB"_s;
}

QString FormatDateStamp(const QDateTime& moment)
{
    return moment.toString(u"yyyy-MM-dd  hh-mm-ss"_s);
}

QString FormatClock(const QDateTime& moment)
{
    return moment.toString(u"dd.MM.yyyy  hh:mm:ss"_s);
}

void GetDateParts(const QDateTime& moment, QString& year, QString& month, QString& day, QString& hour,
                  QString& minute, QString& second)
{
    year = QString::number(moment.date().year());
    month = moment.toString(u"MM"_s);
    day = moment.toString(u"dd"_s);
    hour = moment.toString(u"hh"_s);
    minute = moment.toString(u"mm"_s);
    second = moment.toString(u"ss"_s);
}

double Val(QStringView text)
{
    QString number;
    bool seenPoint = false;
    for (const QChar character : text) {
        if (character == u' ' || character == u'\t')
            continue;
        const bool sign = number.isEmpty() && (character == u'-' || character == u'+');
        const bool point = character == u'.' && !seenPoint;
        if (!sign && !point && !(character >= u'0' && character <= u'9'))
            break;
        seenPoint = seenPoint || point;
        number.append(character);
    }
    return number.toDouble();
}

qint32 toInt32(double number)
{
    constexpr double lowest = std::numeric_limits<qint32>::min();
    constexpr double highest = std::numeric_limits<qint32>::max();
    return std::isnan(number) ? 0 : static_cast<qint32>(std::clamp(number, lowest, highest));
}

qint32 ValInt(QStringView text)
{
    return toInt32(Val(text));
}

bool IsNumeric(QStringView text)
{
    bool ok = false;
    text.trimmed().toString().toDouble(&ok);
    return ok && !text.trimmed().contains(u'n', Qt::CaseInsensitive); // neither "nan" nor "inf"
}

} // namespace kalmo::app
