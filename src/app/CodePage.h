#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::app {

/// The one conversion between bytes and text: code page Windows-1252. Its five unassigned values (129, 141,
/// 143, 144, 157) are mapped to the control characters of the same number, so that all 256 values survive
/// both ways.
QString fromCp1252(QByteArrayView bytes);

/// Replaces a character that the code page doesn't have by "?", one byte for each character.
QByteArray toCp1252(QStringView text);

/// Value of a character in the code page, -1 if it has none.
int cp1252Value(char32_t character);

/// Returns true if every character of the text has a value in the code page.
bool fitsCp1252(QStringView text);

} // namespace kalmo::app
