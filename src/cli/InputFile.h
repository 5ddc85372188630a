#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::cli {

/// Whether a file is of the kind that its name says, such as ".json".
bool endsIn(const QString& path, QStringView ending);

/// Whole content of a file of entries. False, with the fault in `error`, for one that isn't there, can't be
/// read, or is too large to be one.
bool readInputFile(const QString& path, QByteArray& bytes, QString& error);

/// Text of a file in the code page, with plain line ends. False, with the fault in `error`, for what looks
/// like UTF-8.
bool decodeInput(const QByteArray& bytes, QString& text, QString& error);

/// Splits "a","b","c" at what stands between the quotes; quotes within a field pass. False for a line of
/// another form.
bool splitQuoted(const QString& line, QStringList& fields);

/// Line of a text that a byte stands in, counted from 1.
int lineOf(const QByteArray& bytes, qsizetype offset);

} // namespace kalmo::cli
