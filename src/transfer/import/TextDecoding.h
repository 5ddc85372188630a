#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

enum class Encoding { Ansi, Utf8, Utf16 };

/// The likely encoding of a text: that of its byte order mark; else UTF-8 if the bytes are valid by it and
/// contain letters beyond ASCII; else ANSI, that is Windows-1252.
Encoding detectEncoding(QByteArrayView bytes);

/// The text of bytes. ANSI takes every byte for a character, a byte order mark too. Unicode loses its mark,
/// and letters with loose accents become one character each. UTF-16 without a mark is little-endian.
QString decodeText(QByteArrayView bytes, Encoding encoding);

/// Returns true if bytes are no text: they contain a NUL and are not UTF-16.
bool isBinary(QByteArrayView bytes, Encoding encoding);

/// Returns true if the bytes begin as plain letters in UTF-16 without a byte order mark do: one of each two
/// is a NUL, always the first or always the second.
bool looksLikeUtf16(QByteArrayView bytes);

} // namespace kalmo::transfer
