#pragma once

#include <QLocale>
#include <QString>

namespace kalmo::ui {

/// The locale's pattern of a short date, but always with four digits of the year: the century of a birthday
/// must not be guessed. Day, month, year if the locale has no pattern of numbers.
QString shortDatePattern(const QLocale& locale);

/// A date in the form of the user's system, for example "31.12.2004".
QString toShortDate(QDate date, const QLocale& locale);

/// Parses a date that a user typed: numbers in the locale's order with any marks between them, the year first
/// if it has four digits, or one of the locale's own forms. A missing year is that of `today`; two digits
/// mean 1930 to 2029. Invalid if the text is no date.
QDate fromShortDate(const QString& text, const QLocale& locale, QDate today);

} // namespace kalmo::ui
