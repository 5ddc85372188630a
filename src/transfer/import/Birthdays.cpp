#include "transfer/import/Birthdays.h"

#include "transfer/import/NumberRewriting.h"

namespace kalmo::transfer {

namespace {

bool isWithin(const QString& text, int lowest, int highest)
{
    const int value = leadingNumber(text);
    return isNumeric(text) && value >= lowest && value <= highest;
}

QString twoDigitsOf(const QString& number)
{
    return (u'0' + number).right(2);
}

/// The blank-separated words of a birthday, empty if it has no blank or its first has no dot.
QStringList birthdayWords(QString text)
{
    text.replace(u"  "_s, u" "_s);
    const QStringList words = text.split(u' ');
    return words.size() > 1 && words.first().contains(u'.') ? words : QStringList();
}

/// "24.12", empty if the parts are no day and month.
QString dayAndMonth(const QStringList& date)
{
    if (!isWithin(date.value(0), 1, 31) || !isWithin(date.value(1), 1, 12))
        return {};
    return twoDigitsOf(date[0]) + u'.' + twoDigitsOf(date[1]);
}

/// Returns true if "31.02" names a day of some year.
bool isDayOfSomeYear(QStringView dayAndMonth)
{
    constexpr int leapYear = 2000;
    return QDate(leapYear, leadingNumber(dayAndMonth.mid(3, 2)), leadingNumber(dayAndMonth.first(2)))
        .isValid();
}

} // namespace

int secondsOf(QStringView time)
{
    return leadingNumber(time.mid(0, 2)) * 3600 + leadingNumber(time.mid(3, 2)) * 60;
}

std::optional<QString> ParseBirthdayClassic(const QString& text)
{
    const QStringList words = birthdayWords(text);
    const QString day = words.isEmpty() ? QString() : dayAndMonth(words[0].split(u'.'));
    if (day.isEmpty())
        return std::nullopt;
    const QStringList time = words[1].split(u':');
    // A minute of 0 is left to the general reading on purpose.
    if (!isWithin(time.value(0), 0, 23) || !isWithin(time.value(1), 1, 59))
        return std::nullopt;
    return day + u"  "_s + twoDigitsOf(time[0]) + u':' + twoDigitsOf(time[1]);
}

std::optional<QString> ParseBirthdayVcard(const QString& text, const QString& defaultTime)
{
    const QStringList words = birthdayWords(text);
    const QStringList date = words.value(0).split(u'.');
    const QString day = dayAndMonth(date);
    if (day.isEmpty() || !isWithin(date.value(2), 1900, 2099))
        return std::nullopt;
    const QString start = day + u'.' + date[2] + u"  "_s;
    const QStringList time = words[1].split(u':');
    if (time.size() < 2 || !isWithin(time[0], 0, 23))
        return start + defaultTime;
    const bool hasMinute = isWithin(time[1], 1, 59);
    return start + twoDigitsOf(time[0]) + u':' + (hasMinute ? twoDigitsOf(time[1]) : defaultTime.right(2));
}

QDateTime DateSL55_2_Date(const QString& text)
{
    const auto number = [&text](int place, int size) {
        const QString digits = text.mid(place, size);
        return isNumeric(digits) ? leadingNumber(digits) : -1;
    };
    const QDate date(number(6, 4), number(3, 2), number(0, 2));
    const QTime time(number(12, 2), number(15, 2));
    return date.isValid() && time.isValid() ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

BirthdayCell classicBirthday(QStringView cell, DateOrder order, QDate today)
{
    if (cell.isEmpty())
        return {};
    if (const auto text = ParseBirthdayClassic(cell.toString()))
        return {.text = *text, .isImpossible = !isDayOfSomeYear(*text)};
    const auto read = readGeneralDate(cell, order, today);
    if (!read)
        return {};
    return {.text = read->date.toString(u"dd.MM"_s) + u"  "_s + read->time.toString(u"hh:mm"_s),
            .hasYear = read->hasYear,
            .hint = read->hint};
}

BirthdayCell vcardBirthday(QStringView cell, const QString& defaultTime, DateOrder order, QDate today)
{
    if (cell.isEmpty())
        return {};
    if (const auto text = ParseBirthdayVcard(cell.toString(), defaultTime))
        return {.text = *text, .isImpossible = !DateSL55_2_Date(*text).isValid()};
    auto read = readGeneralDate(cell, order, today);
    if (!read)
        return {};
    if (read->time == QTime(0, 0))
        read->time = read->time.addSecs(secondsOf(defaultTime));
    return {.text = read->date.toString(u"dd.MM.yyyy"_s) + u"  "_s + read->time.toString(u"hh:mm"_s),
            .hasYear = read->hasYear,
            .hint = read->hint};
}

} // namespace kalmo::transfer
