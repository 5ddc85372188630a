#pragma once

#include <QLocale>
#include <QString>

namespace kalmo::ui {

/// The locale's pattern of a short date, always with four digits of the year, since half of a birthday's
/// century would be guesswork. Day, month, year where the locale has no pattern of numbers.
QString shortDatePattern(const QLocale& locale);

/// A date as the user's system writes it, for example "31.12.2004".
QString toShortDate(QDate date, const QLocale& locale);

/// The date that a user typed: numbers in the locale's order with any marks between them, the year first if
/// it has four digits, or one of the locale's own forms. A missing year is that of `today`; two digits mean
/// 1930 to 2029. Invalid if it is none.
QDate fromShortDate(const QString& text, const QLocale& locale, QDate today);

} // namespace kalmo::ui
