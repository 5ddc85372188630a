#include "phonedata/EntryRules.h"

namespace kalmo::phonedata {

using namespace Qt::StringLiterals;

namespace {

constexpr int timePosition = 7; // after "24.12" and two blanks
constexpr int timeLength = 5;

/// The value of two digits at a place, -1 without two digits there.
int twoDigits(const QString& text, int position)
{
    if (position + 2 > text.size())
        return -1;
    const int tens = text[position].unicode() - u'0';
    const int ones = text[position + 1].unicode() - u'0';
    return tens >= 0 && tens <= 9 && ones >= 0 && ones <= 9 ? tens * 10 + ones : -1;
}

} // namespace

QStringList reminderTimes()
{
    QStringList times;
    for (int hour = 0; hour < 24; ++hour) {
        for (const int minute : {0, 30}) {
            const QString time = QTime(hour, minute).toString(u"hh:mm"_s);
            if (time != u"19:30"_s)
                times.append(time);
        }
    }
    return times;
}

bool isTimeOfDay(const QString& text)
{
    const int hour = twoDigits(text, 0);
    const int minute = twoDigits(text, 3);
    return text.size() == timeLength && text[2] == u':' && hour >= 0 && hour < 24 && minute >= 0 &&
           minute < 60;
}

QString anniversaryText(QDate date, const QString& time)
{
    return date.toString(u"dd.MM"_s) + u"  "_s + time;
}

QDate anniversaryDate(const QString& text, QDate today)
{
    if (text.size() < 5 || text[2] != u'.')
        return {};
    return dayWithoutYear(today.year(), twoDigits(text, 3), twoDigits(text, 0));
}

QString anniversaryTime(const QString& text)
{
    return text.mid(timePosition, timeLength);
}

QDate dayWithoutYear(int year, int month, int day)
{
    if (day == 29 && month == 2) {
        while (!QDate::isLeapYear(year))
            --year;
    }
    return {year, month, day};
}

bool isContactNumberChar(QChar character)
{
    return QStringView(u"#*+?0123456789").contains(character);
}

QString acceptedContactNumber(const QString& text)
{
    const QString compact = QString(text).remove(u' ');
    qsizetype length = 0;
    while (length < compact.size() && isContactNumberChar(compact[length]))
        ++length;
    return compact.first(length);
}

} // namespace kalmo::phonedata
