#pragma once

#include "phonedata/VcfEntry.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace kalmo::phonedata {

/// A contact together with the bytes of its card.
struct ContactCard
{
    tVcfEntry entry;
    QByteArray raw = {}; ///< from BEGIN:VCARD to the line end after END:VCARD; empty where not known
};

/// All cards of "pb.vcf".
struct VcfCards
{
    std::vector<ContactCard> cards = {}; ///< of the pieces with a LUID line
    int upperBound = 0;      ///< index of the last piece, where the end of a card separates pieces
    bool endsBroken = false; ///< the text was decoded, and ends in the middle of a letter
    QByteArray object = {};  ///< the bytes that the phone sent

    /// Returns true if all contacts came. `used` is the phone's own count; the phone's own card comes before
    /// the contacts. An empty object is complete for an empty phonebook only.
    bool isWhole(int used) const;
    /// Card of a contact, null without one.
    const ContactCard* find(const QString& luid) const;
};

/// Reads the object "pb.vcf". Texts are decoded as VcfStripCharset and VcfParseItem do it, but for a line
/// whose bytes are valid UTF-8 with letters that those do not know: that one is decoded as UTF-8.
VcfCards parseCards(const QByteArray& object);

/// Marks the phone's own card as one without a valid LUID if it has a LUID line. It is the first of one card
/// more than `used`, and must be neither changed nor deleted. Where the phone does not count, it may be the
/// first of cards that all have a LUID line.
void markOwnCard(VcfCards& cards, std::optional<int> used);

/// One line of a card with its soft line ends.
struct CardLine
{
    QByteArray key;        ///< "TEL;HOME": without the marks of encoding and character set
    QByteArray marks = {}; ///< ";ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8", as far as the line has them
    QByteArray value = {}; ///< with the lines that continue it: folded ones and those of a base64 block
    bool hasColon = true;  ///< false for a line that is no more than its key

    QByteArray bytes() const { return key + marks + (hasColon ? ":" : "") + value + "\r\n"; }
};
std::vector<CardLine> cardLines(const QByteArray& raw);

/// Text of a line: its bytes as UTF-8 if they are valid, else in the code page; up to a line end or NUL in
/// it.
QString lineText(const CardLine& line);

/// Text of a line that is marked as quoted-printable or holds bytes beyond ASCII, if its bytes are valid
/// UTF-8; up to a line end or NUL in it.
std::optional<QString> utf8Text(const CardLine& line);

/// The contact as its card says it by the rules of vCard, without the mistakes of the described decoder. A
/// text whose quoted-printable is no UTF-8 stays as it was decoded, for phones and Kalmo write such texts.
/// Without the bytes of the card it is the entry.
tVcfEntry writtenEntry(const ContactCard& card);

/// The lines that tVcfEntry has no field for, such as a fax number. Lines that frame a card are none of them.
std::vector<CardLine> otherLines(const QByteArray& raw);

/// The card under another LUID, which is empty for a card that the phone is to add. All other bytes stay.
QByteArray withLuid(const QByteArray& raw, const QString& luid);

/// The one form of birthdays that mean the same: of zeros is none, with the day's leading zero, without the
/// time of midnight.
QString normalBirthday(QString birthday);

/// Returns true if two contacts say the same, whatever their LUIDs. A birthday of zeros is none, its day
/// may lack a leading zero, and without a time it is that of midnight: phones add it.
bool haveSameContent(const tVcfEntry& left, const tVcfEntry& right);

} // namespace kalmo::phonedata
