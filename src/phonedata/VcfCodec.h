#pragma once

#include "phonedata/VcfCards.h"

namespace kalmo::phonedata {

/// The value after a key, up to the end of the line or a NUL; empty if there is no such line. The first
/// line of a card is never looked at.
QString GetVcfValue(QStringView card, QStringView key);

/// Parts a name at the first ";" that is not escaped, into last and first name. All further ones stay in the
/// first name.
std::pair<QString, QString> splitName(const QString& value);

/// Text of one card. `encodeNames` writes a name with letters beyond ASCII as quoted-printable, by VcfQpEnc.
/// A name or e-mail with a letter that Windows-1252 lacks is always written so, as UTF-8; nothing else is
/// ever encoded. Line ends within a value become blanks. `before` is the card that the phone holds for the
/// contact, if it holds one. Of a field that has not changed the bytes stay, and so do lines that tVcfEntry
/// has no field for.
QByteArray VcfBuildItem(const tVcfEntry& entry, bool encodeNames, const ContactCard* before = nullptr);

/// Characters of a contact that phones may give back as others because of the spelling of cards: "=", which
/// begins a code; C3, which UFT8Dec takes for the first of two bytes; the signs of a name for which VcfQpEnc
/// has no UTF-8; in a number, a letter that Windows-1252 lacks; and "\\" at the end of the last name. A name
/// or e-mail that is written as UTF-8 loses none of them.
QString endangeredCharacters(const tVcfEntry& entry);

/// The contact of one card. One without a LUID has its `index` in three digits instead, as a stand-in.
tVcfEntry VcfParseItem(const QString& card, int index);

} // namespace kalmo::phonedata
