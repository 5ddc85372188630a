#pragma once

#include "phonedata/VcfEntry.h"

#include <QByteArray>
#include <QList>

namespace kalmo::phonedata {

/// What stands behind a key, up to the end of the line or a NUL; empty if there is no such line. The first
/// line of a card is never looked at.
QString GetVcfValue(QStringView card, QStringView key);

/// Text of one card. `encodeNames` writes a name with letters beyond ASCII as quoted-printable UTF-8;
/// nothing but the name is ever encoded. Line ends within a value become blanks.
QByteArray VcfBuildItem(const tVcfEntry& entry, bool encodeNames);

/// Characters of a contact that phones may give back as others, for the sake of the spelling of cards: those
/// that have no byte in it; "=", which begins a code; C3, which UFT8Dec takes for the first of two bytes; the
/// signs of a name for which VcfQpEnc has no UTF-8; and "\\" at the end of the last name.
QString endangeredCharacters(const tVcfEntry& entry);

/// The contact of one card. One without a LUID has its `index` in three digits instead, as a stand-in.
tVcfEntry VcfParseItem(const QString& card, int index);

/// The cards of an object.
struct VcfCards
{
    QList<tVcfEntry> entries; ///< of the cards that have a LUID line
    int upperBound = 0;       ///< index of the last piece, where an end of a card parts pieces
};
VcfCards parseCards(const QString& text);

} // namespace kalmo::phonedata
