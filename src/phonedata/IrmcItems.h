#pragma once

#include "obex/clsMmc.h"
#include "phonedata/IrmcAnswers.h"
#include "phonedata/IrmcKinds.h"
#include "phonedata/VcfCards.h"

namespace kalmo::phonedata {

/// Single operations on the phone's contacts and organizer. Each needs an open connection; writing and
/// deleting the one to `Target::IrMC`, and the folder of single items as the current one. Failures are shown
/// by the client unless it says otherwise.

/// Largest capacity that is believed, in entries.
inline constexpr int mostContacts = 500;

/// Capacity of the phonebook. Starts from whatever folder and ends in the root. Returns true if
/// "info.log" has both numbers; that it lacks them is not shown.
bool VcfGetInfo(obex::clsMmc& client, tVcfInfo& info, const toolkit::Progress& progress);
/// The same for a store of the organizer. Part of the described interface.
bool VcxGetInfo(obex::clsMmc& client, qint32 kind, tVcfInfo& info, const toolkit::Progress& progress);

/// The change counter of the current folder.
bool VcfGetCc(obex::clsMmc& client, qint32& counter, const toolkit::Progress& progress);

/// Reads all items of a kind as one text, decoded: what was a line end within a value is one between lines
/// then. A phone that is busy preparing it is asked up to 16 times.
/// The client is in "telecom" afterwards. Part of the described interface.
bool VcxRead(obex::clsMmc& client, qint32 kind, QString& text, const toolkit::Progress& progress);
/// The same as the bytes that the phone sent.
bool VcxReadBytes(obex::clsMmc& client, qint32 kind, QByteArray& bytes, const toolkit::Progress& progress);

/// Result of writing or deleting one item.
enum class ItemResult {
    Written,     ///< the phone confirmed it; a deleted item is gone
    Refused,     ///< all bytes went out, and the phone refused them
    NotSent,     ///< not all bytes went out, so the phone has not done it
    Unconfirmed, ///< all bytes went out, and the phone did not confirm them
};

/// Text of a contact's card for the phone that is connected. `before` is the card that the phone holds for
/// it, null for none; VcfBuildItem says what it is for.
QByteArray cardFor(const app::Context& context, const tVcfEntry& entry, const ContactCard* before);

/// Writes one contact, which is a new one without a LUID. `counter` is the change counter that the phone is
/// expected to have, and afterwards the one that the phone reports. `luid` returns the phone's name for the
/// entry from now on, or noValidLuid() for a phone that reports none. `index` of `total` is for the panel; 0
/// for none. Part of the described interface.
ItemResult VcfWriteItem(obex::clsMmc& client, const tVcfEntry& entry, qint32& counter, QString& luid,
                        const toolkit::Progress& progress, int index = 0, int total = 0);
/// The same with the text of the card.
ItemResult writeCard(obex::clsMmc& client, const QByteArray& card, const QString& luidInPhone,
                     qint32& counter, QString& luid, const toolkit::Progress& progress, int index = 0,
                     int total = 0);

/// One item of the organizer, in the text in which it goes over the wire.
struct OrganizerItem
{
    QByteArray text;
    QString luid; ///< empty for a new item
};
/// Writes one, as VcfWriteItem does. Part of the described interface.
ItemResult VcxWrite(obex::clsMmc& client, qint32 kind, const OrganizerItem& item, qint32& counter,
                    QString& luid, const toolkit::Progress& progress, int index = 0, int total = 0);

/// Deletes one item; Written means that it is gone. `luid` and `counter` become what the phone says. The
/// later families say nothing: -1 as `counter` means that it has to be read again.
ItemResult VcxDel(obex::clsMmc& client, qint32 kind, QString& luid, qint32& counter,
                  const toolkit::Progress& progress, int index = 0, int total = 0);

} // namespace kalmo::phonedata
