#pragma once

#include <QString>

namespace kalmo::app {

/// The phones' lists were written by routines that know only the UTF-8 sequences that begin with C3 hex.
/// These cover the Latin letters of a German phone book. Their mistakes on other bytes are kept on purpose,
/// so that lists written with them read back the same. Bytes and text are alike here: one character of the
/// code page for each byte.

/// Decodes bytes that may hold such sequences. A C3 and a following value up to 191 become the value plus 64,
/// and if that is C3 again it begins the next sequence. A following value above 191 is lost. A C3 at the very
/// end stays, and `endsBroken` becomes true.
QString UFT8Dec(const QString& bytes, bool* endsBroken = nullptr);

/// Encodes each character from 128 up as C3 and its value less 64. This is correct for C0 to FF; UFT8Dec
/// reads all of them back. A character that the code page doesn't have counts as "?".
QString Utf8EncC3(const QString& text);

} // namespace kalmo::app
