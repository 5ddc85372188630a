#pragma once

#include <QString>

namespace kalmo::phonedata {

inline constexpr int longestName = 16;   ///< characters of a name that every handset can hold
inline constexpr int longestNumber = 32; ///< characters of a number
inline constexpr int longestEmail = 60;  ///< characters of an e-mail address

/// Returns true if a handset's name field can show the character: ASCII less brackets, backslash, circumflex
/// and grave accent, and the usual accented letters.
bool IsNameChar(QChar character);

/// Returns true if a character may be in a number: digits, "#", "*", "+", "P" for a pause, "R" for a recall.
bool IsNumberChar(QChar character);

/// The part of a text before its first character that a name can't have.
QString acceptedName(const QString& text);

/// The part of a text before its first character that a number can't have; a "+" may only stand in front.
QString acceptedNumber(const QString& text);

} // namespace kalmo::phonedata
