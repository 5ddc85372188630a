#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace kalmo::transfer {

/// How "5/4/2001" is read. A date with dots is always day first; day and month swap only where that alone
/// gives a date.
enum class DateOrder { DayFirst, MonthFirst };

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

} // namespace kalmo::transfer
