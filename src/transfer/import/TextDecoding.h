#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

enum class Encoding { Ansi, Utf8, Utf16 };

/// What the bytes of a text look like: a byte order mark says it; else they are UTF-8 if they are valid by it
/// and hold letters beyond ASCII; else ANSI, that is Windows-1252.
Encoding detectEncoding(QByteArrayView bytes);

/// The text of bytes. ANSI takes every byte for a character, a byte order mark too. Unicode loses its mark,
/// and letters with loose accents become one character each. UTF-16 without a mark is little-endian.
QString decodeText(QByteArrayView bytes, Encoding encoding);

/// True if bytes are no text: a NUL is in them, and nothing says that they are UTF-16.
bool isBinary(QByteArrayView bytes, Encoding encoding);

} // namespace kalmo::transfer
