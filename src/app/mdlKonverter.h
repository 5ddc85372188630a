#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace kalmo::app {

/// Each byte as two upper-case hex digits with a blank before it: "AB" gives " 41 42".
QString HexFromText(const QByteArray& bytes);

/// The same without blanks: "AB" gives "4142".
QString HexFromTextPlain(const QByteArray& bytes);

/// Bytes of a hex text; blanks between pairs are allowed and a single last character is ignored. A pair that
/// is no hex number gives the byte 0. Part of the described interface.
QByteArray TextFromHex(const QString& hex);

/// Size in kilobytes with one decimal and the unit, for example "1,4kB". A size above 0 is never shown as
/// 0.0. The decimal mark is the locale's.
QString FormatSizeKB(qint64 bytes);

/// Date and time in the form "yyyy-mm-dd  hh-nn-ss", for the names of backups.
QString FormatDateStamp(const QDateTime& moment);

/// "dd.mm.yyyy  hh:nn:ss", as the window shows a clock.
QString FormatClock(const QDateTime& moment);

/// Parts of a moment as texts; all but the year have at least two digits. Part of the described interface.
void GetDateParts(const QDateTime& moment, QString& year, QString& month, QString& day, QString& hour,
                  QString& minute, QString& second);

/// The leading number of a text, 0 if there is none: "12 kB" gives 12. Blanks before it are ignored.
double Val(QStringView text);

/// The same as a whole number, held within the range of 32 bits.
qint32 ValInt(QStringView text);

/// A number held within the range of 32 bits, without its fraction.
qint32 toInt32(double number);

/// Returns true if the whole text is a number.
bool IsNumeric(QStringView text);

} // namespace kalmo::app
