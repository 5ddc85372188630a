#include "transfer/import/Birthdays.h"

#include "phonedata/EntryRules.h"
#include "transfer/import/NumberRewriting.h"

namespace kalmo::transfer {

namespace {

constexpr int firstYearOfLastCentury = 30; // of two digits
constexpr int noYear = -1;

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

struct DateNumbers
{
    int first = 0;
    int second = 0;
    int year = noYear;
};

int yearOf(QStringView digits)
{
    const int value = leadingNumber(digits);
    if (digits.size() == 4)
        return value;
    return value >= firstYearOfLastCentury ? 1900 + value : 2000 + value;
}

bool isShort(QStringView digits)
{
    return digits.size() <= 2 && isNumeric(digits);
}

bool isYear(QStringView digits)
{
    return (digits.size() == 4 || digits.size() == 2) && isNumeric(digits);
}

std::optional<ReadDate> dateOf(const DateNumbers& numbers, DateOrder order, QDate today)
{
    const auto made = [&](int day, int month) {
        return numbers.year == noYear ? phonedata::dayWithoutYear(today.year(), month, day)
                                      : QDate(numbers.year, month, day);
    };
    const QDate dayFirst = made(numbers.first, numbers.second);
    const QDate monthFirst = made(numbers.second, numbers.first);
    if (!dayFirst.isValid() && !monthFirst.isValid())
        return std::nullopt;
    ReadDate read{.hasYear = numbers.year != noYear};
    const bool takesDayFirst = dayFirst.isValid() && (order == DateOrder::DayFirst || !monthFirst.isValid());
    read.date = takesDayFirst ? dayFirst : monthFirst;
    if (!dayFirst.isValid())
        read.hint = DateHint::MonthFirstOnly;
    else if (!monthFirst.isValid())
        read.hint = DateHint::DayFirstOnly;
    else if (dayFirst != monthFirst)
        read.hint = DateHint::Either;
    return read;
}

std::optional<ReadDate> dottedDate(QStringView text, QDate today)
{
    const auto parts = text.split(u'.');
    const bool hasYear = parts.size() == 3 && isYear(parts[2]);
    if (parts.size() > 3 || !isShort(parts[0]) || !isShort(parts[1]) ||
        (parts.size() == 3 && !hasYear && !parts[2].isEmpty()))
        return std::nullopt;
    auto read =
        dateOf({leadingNumber(parts[0]), leadingNumber(parts[1]), hasYear ? yearOf(parts[2]) : noYear},
               DateOrder::DayFirst, today);
    if (read)
        read->hint = read->hint == DateHint::MonthFirstOnly ? DateHint::SwappedDots : DateHint::None;
    return read;
}

std::optional<ReadDate> isoDate(QStringView text, QDate today)
{
    const bool hasYear = !text.startsWith(u"--");
    const auto parts = (hasYear ? text : text.sliced(1)).split(u'-');
    if (parts.size() != 3 || !isShort(parts[1]) || !isShort(parts[2]) ||
        (hasYear && (parts[0].size() != 4 || !isNumeric(parts[0]))))
        return std::nullopt;
    auto read =
        dateOf({leadingNumber(parts[2]), leadingNumber(parts[1]), hasYear ? leadingNumber(parts[0]) : noYear},
               DateOrder::DayFirst, today);
    if (!read || read->hint == DateHint::MonthFirstOnly)
        return std::nullopt;
    read->hint = DateHint::None;
    return read;
}

std::optional<ReadDate> datePart(QStringView text, DateOrder order, QDate today)
{
    if (text.contains(u'.'))
        return dottedDate(text, today);
    const auto parts = text.split(text.contains(u'/') ? u'/' : u'-');
    if (parts.size() == 3 && isShort(parts[0]) && isShort(parts[1]) && isYear(parts[2]))
        return dateOf({leadingNumber(parts[0]), leadingNumber(parts[1]), yearOf(parts[2])}, order, today);
    return text.contains(u'/') ? std::nullopt : isoDate(text, today);
}

/// Seconds of "8:30" or "08:30:00"; nothing for a text that is no time.
std::optional<int> timePart(QStringView text)
{
    const auto parts = text.split(u':');
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    int seconds = 0;
    for (qsizetype index = 0; index < 3; ++index) {
        const int value = index < parts.size() ? leadingNumber(parts[index]) : 0;
        if ((index < parts.size() && !isShort(parts[index])) || value > (index == 0 ? 23 : 59))
            return std::nullopt;
        seconds = seconds * 60 + value;
    }
    return seconds;
}

/// Returns true if "31.02" names a day of some year.
bool isDayOfSomeYear(QStringView dayAndMonth)
{
    constexpr int leapYear = 2000;
    return QDate(leapYear, leadingNumber(dayAndMonth.mid(3, 2)), leadingNumber(dayAndMonth.first(2)))
        .isValid();
}

qsizetype timePlace(QStringView text)
{
    const qsizetype blank = text.indexOf(u' ');
    return blank < 0 && text.count(u'-') == 2 ? text.indexOf(u'T') : blank;
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

std::optional<ReadDate> readGeneralDate(QStringView text, DateOrder order, QDate today)
{
    text = text.trimmed();
    const qsizetype place = timePlace(text);
    auto read = datePart(place < 0 ? text : text.first(place), order, today);
    if (!read || place < 0)
        return read;
    const auto seconds = timePart(text.sliced(place + 1).trimmed());
    if (!seconds)
        return std::nullopt;
    read->time = QTime::fromMSecsSinceStartOfDay(*seconds * 1000);
    return read;
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
