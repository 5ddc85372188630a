#pragma once

#include "app/Sizes.h"
#include "operations/SavedListFault.h"

#include <QByteArray>
#include <QJsonArray>

namespace kalmo::operations {

/// Returns true if a path ends in ".json", for example, in any case.
bool endsIn(const QString& path, QStringView ending);

/// Bytes of the largest file that is read.
inline constexpr qint64 largestSavedFile = 16 * app::megabyte;

/// Reads a whole file. Returns false with the fault if that fails.
bool readInputFile(const QString& path, QByteArray& bytes, SavedListFault& fault);

/// Decodes a text in the code page and makes all line ends "\n". Returns false, with the fault, for bytes
/// that look like UTF-8.
bool decodeInput(const QByteArray& bytes, QString& text, SavedListFault& fault);

/// Splits "a","b","c" at each quote, comma, quote; quotes within a field pass. Returns false for a line that
/// does not begin and end with a quote.
bool splitQuoted(const QString& line, QStringList& fields);

/// An object outside of an array is one entry, or a fault.
enum class LoneObject { Refused, Taken };

/// Parses an array of JSON. Returns false with the fault and its line for anything else.
bool parseJsonArray(const QByteArray& bytes, LoneObject loneObject, QJsonArray& array, SavedListFault& fault);

} // namespace kalmo::operations
