#pragma once

#include <QString>

namespace kalmo::app {

/// The phones' lists were written by routines that know only the UTF-8 sequences that begin with C3 hex,
/// which cover the Latin letters of a German phone book. Their mistakes on other bytes are kept, so that
/// lists written with them read back the same. Bytes and text are alike here: one character of the code page
/// for each byte.

/// Text of bytes that may hold such sequences. A C3 and a following value up to 191 become the value plus 64,
/// and if that is C3 again it takes part in the next one. A following value above 191 is lost. A C3 at the
/// very end stays; `endsBroken` gets whether there was one.
QString UFT8Dec(const QString& bytes, bool* endsBroken = nullptr);

/// Each character from 128 up becomes C3 and its value less 64. Right for C0 to FF; UFT8Dec reads all of them
/// back. A character that the code page doesn't have counts as "?".
QString Utf8EncC3(const QString& text);

} // namespace kalmo::app
