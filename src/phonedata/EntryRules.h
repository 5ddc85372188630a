#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace kalmo::phonedata {

/// The times that an anniversary's reminder is offered at: each half hour but 19:30, which the handsets' own
/// list lacks too. Any other may be typed.
QStringList reminderTimes();

/// Returns true if a text is a time of the form "12:30".
bool isTimeOfDay(const QString& text);

/// An anniversary as the classic phonebook shows it: "24.12  08:30".
QString anniversaryText(QDate date, const QString& time);

/// The day of such a text in the year of `today`, in the last leap year for the 29th of February. Invalid
/// where the text has none.
QDate anniversaryDate(const QString& text, QDate today);
/// The time of such a text, empty where it has none.
QString anniversaryTime(const QString& text);

/// `day` and `month` in `year`, or in the last leap year before it for the 29th of February.
QDate dayWithoutYear(int year, int month, int day);

/// Returns true if a character may be in a number of a contact: digits, "#", "*", "+" and "?".
bool isContactNumberChar(QChar character);

/// A number of a contact without blanks, up to the first character that can't stand in one.
QString acceptedContactNumber(const QString& text);

} // namespace kalmo::phonedata
