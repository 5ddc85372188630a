#pragma once

#include "transfer/import/GeneralDate.h"

namespace kalmo::transfer {

/// Reads "24.12. 08:30" and similar texts for the classic list: "24.12  08:30". Returns nothing for another
/// form: the text needs a time whose minute is not 0.
std::optional<QString> ParseBirthdayClassic(const QString& text);

/// Reads "24.12.2005 08:30" for contacts: "24.12.2005  08:30". The text needs a blank. `defaultTime`
/// ("12:00") replaces a missing or bad time, and its minute a minute of 0.
std::optional<QString> ParseBirthdayVcard(const QString& text, const QString& defaultTime);

/// The moment of a text of the form "24.12.2005  08:30", by fixed positions; invalid where there is none. It
/// has no zone: no hour is left out for daylight saving.
QDateTime DateSL55_2_Date(const QString& text);

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
