#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace kalmo::transfer {

/// How "5/4/2001" is read. A date with dots is always day first; day and month swap only where that alone
/// gives a date.
enum class DateOrder { DayFirst, MonthFirst };

/// Reads "24.12. 08:30" and similar texts for the classic list: "24.12  08:30". Returns nothing for another
/// form: the text needs a time whose minute is not 0.
std::optional<QString> ParseBirthdayClassic(const QString& text);

/// Reads "24.12.2005 08:30" for contacts: "24.12.2005  08:30". The text needs a blank. `defaultTime`
/// ("12:00") replaces a missing or bad time, and its minute a minute of 0.
std::optional<QString> ParseBirthdayVcard(const QString& text, const QString& defaultTime);

/// The moment of a text of the form "24.12.2005  08:30", by fixed positions; invalid where there is none. It
/// has no zone: no hour is left out for daylight saving.
QDateTime DateSL55_2_Date(const QString& text);

/// The order of day and month in a date.
enum class DateHint {
    None,   ///< its form says it, or both orders give the same
    Either, ///< day and month could change places
    DayFirstOnly,
    MonthFirstOnly,
    SwappedDots ///< has dots as a date day first does, and is none
};

/// A date in any form that people write.
struct ReadDate
{
    QDate date = {};
    QTime time = QTime(0, 0);
    bool hasYear = true;
    DateHint hint = DateHint::None;
};

/// Reads D.M.YYYY, D.M.YY, D.M., D.M, "/" or "-" where a year follows, YYYY-MM-DD, YYYY/MM/DD and --MM-DD,
/// and months by their German or English names, as in "24. Dezember 2005", "24-Dec-05" or "Dec 24". A time
/// may follow, also with AM or PM; one that can't be read counts as midnight. Without a year it is that of
/// `today`, for the 29th of February the last leap year; years of two digits from 30 on are of the last
/// century.
std::optional<ReadDate> readGeneralDate(QStringView text, DateOrder order, QDate today);

/// The result for a cell of birthdays.
struct BirthdayCell
{
    QString text = {}; ///< empty if it holds none
    bool hasYear = true;
    bool isImpossible = false; ///< a day that no calendar has, like 31.02.
    DateHint hint = DateHint::None;
};

/// "24.12  08:30": ParseBirthdayClassic(), else the general reading.
BirthdayCell classicBirthday(QStringView cell, DateOrder order, QDate today);
/// "24.12.2005  08:30": ParseBirthdayVcard(), else the general reading, to which the default time is added
/// unless it has one.
BirthdayCell vcardBirthday(QStringView cell, const QString& defaultTime, DateOrder order, QDate today);

/// A time of the form "08:30" in seconds, by fixed positions: 0 where there is none.
int secondsOf(QStringView time);

} // namespace kalmo::transfer
