#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace kalmo::transfer {

/// How "5/4/2001" is read. A date with dots is always day first; day and month swap only where that alone
/// gives a date.
enum class DateOrder { DayFirst, MonthFirst };

/// "24.12. 08:30", and what is like it, as the classic list has it: "24.12  08:30". Nothing for another form:
/// a time has to be there, and its minute can't be 0.
std::optional<QString> ParseBirthdayClassic(const QString& text);

/// "24.12.2005 08:30" as the contacts have it: "24.12.2005  08:30". A blank has to be there; where no usable
/// time follows `defaultTime` ("12:00") stands in for it, for a minute of 0 only its minute.
std::optional<QString> ParseBirthdayVcard(const QString& text, const QString& defaultTime);

/// The moment of a text of the form "24.12.2005  08:30", by fixed positions; invalid where there is none. It
/// has no zone: no hour is left out for daylight saving.
QDateTime DateSL55_2_Date(const QString& text);

/// What a date says of the order of its day and its month.
enum class DateHint {
    None,   ///< its form says it, or both orders give the same
    Either, ///< day and month could change places
    DayFirstOnly,
    MonthFirstOnly
};

/// A date in any form that people write.
struct ReadDate
{
    QDate date = {};
    QTime time = QTime(0, 0);
    bool hasYear = true;
    DateHint hint = DateHint::None;
};

/// Reads D.M.YYYY, D.M.YY, D.M., D.M, "/" or "-" where a year follows, YYYY-MM-DD and --MM-DD, each with
/// H:M[:S] or without. Without a year it is that of `today`, for the 29th of February the last leap year;
/// years of two digits from 30 on are of the last century.
std::optional<ReadDate> readGeneralDate(QStringView text, DateOrder order, QDate today);

/// What a cell of birthdays comes out as.
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
