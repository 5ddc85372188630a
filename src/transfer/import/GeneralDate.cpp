#include "transfer/import/GeneralDate.h"

#include "phonedata/EntryRules.h"
#include "transfer/import/NumberRewriting.h"

#include <QRegularExpression>

#include <algorithm>

namespace kalmo::transfer {

namespace {

constexpr int firstYearOfLastCentury = 30; // of two digits
constexpr int noYear = -1;

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

/// The date of a day and a month whose form says which is which.
std::optional<ReadDate> certainDate(const DateNumbers& dayFirst, QDate today)
{
    auto read = dateOf(dayFirst, DateOrder::DayFirst, today);
    if (!read || read->hint == DateHint::MonthFirstOnly)
        return std::nullopt;
    read->hint = DateHint::None;
    return read;
}

/// Reads "2005-12-24", "2005/12/24" and "--12-24".
std::optional<ReadDate> yearFirstDate(QStringView text, QChar separator, QDate today)
{
    const bool hasYear = !text.startsWith(u"--");
    const auto parts = (hasYear ? text : text.sliced(1)).split(separator);
    if (parts.size() != 3 || !isShort(parts[1]) || !isShort(parts[2]) ||
        (hasYear && (parts[0].size() != 4 || !isNumeric(parts[0]))))
        return std::nullopt;
    return certainDate(
        {leadingNumber(parts[2]), leadingNumber(parts[1]), hasYear ? leadingNumber(parts[0]) : noYear},
        today);
}

/// The names of each month in German and English.
constexpr QStringView monthNames[] = {u"Januar Jänner January",
                                      u"Februar Feber February",
                                      u"März Maerz Mrz March",
                                      u"April",
                                      u"Mai May",
                                      u"Juni June",
                                      u"Juli July",
                                      u"August",
                                      u"September",
                                      u"Oktober October",
                                      u"November",
                                      u"Dezember December"};

/// Number of a month that is written by its name or by three or more letters of it, 0 for another word.
int monthOf(QStringView word)
{
    constexpr qsizetype fewestLetters = 3;
    const auto isMeant = [word](QStringView names) {
        return std::ranges::any_of(names.split(u' '), [word](QStringView name) {
            return name.startsWith(word, Qt::CaseInsensitive);
        });
    };
    const auto found = std::ranges::find_if(monthNames, isMeant);
    return word.size() < fewestLetters || found == std::end(monthNames)
               ? 0
               : static_cast<int>(found - std::begin(monthNames)) + 1;
}

/// Reads a month by its name, with the day before or after it, and the year last, first, or left out.
std::optional<ReadDate> namedDate(QString text, QDate today)
{
    static const QRegularExpression separators(u"[-/.,]"_s);
    QStringList words = text.replace(separators, u" "_s).split(u' ', Qt::SkipEmptyParts);
    if (words.size() == 3 && words[0].size() == 4)
        words.swapItemsAt(0, 2);
    if (words.size() > 1 && monthOf(words[0]) > 0)
        words.swapItemsAt(0, 1);
    const int month = monthOf(words.value(1));
    const bool hasYear = words.size() == 3;
    if (month == 0 || words.size() > 3 || !isShort(words[0]) || (hasYear && !isYear(words[2])))
        return std::nullopt;
    return certainDate({leadingNumber(words[0]), month, hasYear ? yearOf(words[2]) : noYear}, today);
}

std::optional<ReadDate> datePart(const QString& text, DateOrder order, QDate today)
{
    if (std::any_of(text.begin(), text.end(), [](QChar character) { return character.isLetter(); }))
        return namedDate(text, today);
    if (text.contains(u'.'))
        return dottedDate(QString(text).replace(u". "_s, u"."_s), today);
    const QChar separator = text.contains(u'/') ? u'/' : u'-';
    const QStringList parts = text.split(separator);
    if (parts.size() == 3 && isShort(parts[0]) && isShort(parts[1]) && isYear(parts[2]))
        return dateOf({leadingNumber(parts[0]), leadingNumber(parts[1]), yearOf(parts[2])}, order, today);
    return yearFirstDate(text, separator, today);
}

/// Time of "8:30", "08:30:00" or "8:30 PM". Parts of a second and a zone say nothing about a birthday. It is
/// midnight for a text that is no time: such a text costs no date.
QTime timePart(QStringView text)
{
    static const QRegularExpression form(uR"(^(\d\d?):(\d\d?)(?::(\d\d?)(?:[.,]\d+)?)?\s*)"
                                         uR"((?:([ap])\.?m\.?|uhr|z|[+-]\d\d:?\d\d)?$)"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    const auto found = form.match(text);
    const int hour = found.capturedView(1).toInt();
    const QStringView half = found.capturedView(4);
    const bool isAfterNoon = half.compare(u'p', Qt::CaseInsensitive) == 0;
    const QTime time(half.isEmpty() ? hour : hour % 12 + (isAfterNoon ? 12 : 0),
                     found.capturedView(2).toInt(), found.capturedView(3).toInt());
    return found.hasMatch() && time.isValid() ? time : QTime(0, 0);
}

/// Place of the blank or "T" before the time, -1 for a text without one.
qsizetype timePlace(QStringView text)
{
    static const QRegularExpression start(u"(?:\\s|(?<=\\d)T)\\s*\\d+:"_s);
    return text.toString().lastIndexOf(start);
}

} // namespace

std::optional<ReadDate> readGeneralDate(QStringView text, DateOrder order, QDate today)
{
    text = text.trimmed();
    const qsizetype place = timePlace(text);
    QString date = (place < 0 ? text : text.first(place)).trimmed().toString();
    if (date.endsWith(u','))
        date.chop(1);
    auto read = datePart(date, order, today);
    if (read && place >= 0)
        read->time = timePart(text.sliced(place + 1).trimmed());
    return read;
}

} // namespace kalmo::transfer
