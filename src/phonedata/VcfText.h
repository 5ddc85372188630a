#pragma once

#include <QString>

namespace kalmo::phonedata {

/// The phones' spelling of texts in cards, one character of the code page for each byte. All of it takes time
/// in proportion to the text, whatever the text.

QString VcfEsc(const QString& text); ///< each ";" becomes "\;"
QString VcfUnesc(const QString& text);

/// Quoted-printable of the letters that are not ASCII, as UTF-8. Nothing else is encoded, not even "=".
QString VcfQpEnc(const QString& text);

/// Replaces, as long as there is a "=", all that equals the first one and the two characters after it by
/// the character of that hex number, 0 if it is none; then decodes UTF-8 by UFT8Dec, which may set
/// `endsBroken`.
QString VcfQpDec(const QString& text, bool* endsBroken = nullptr);

/// Takes the marks of character set and encoding off a whole object of cards. If there was one of the
/// encoding, all of the object is decoded, lines that did not bear it too; otherwise nothing is.
QString VcfStripCharset(const QString& text, bool* endsBroken = nullptr);

} // namespace kalmo::phonedata
