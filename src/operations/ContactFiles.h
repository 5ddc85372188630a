#pragma once

#include "operations/SavedLists.h"
#include "phonedata/VcardStore.h"

#include <QJsonArray>

namespace kalmo::operations {

/// Contacts as an array of objects with the texts `lastName`, `firstName`, `home`, `mobile`, `work`, `email`,
/// `birthday` ("1970-03-21T12:30") and `luid`.
QJsonArray contactJson(const Contacts& contacts);

QByteArray contactJsonBytes(const SavedList& list);
bool readContactJson(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                     SavedListFault& fault);

/// The .csv file of SaveVcfCsv(): a heading, then seven fields a line, without the LUID.
QByteArray contactCsvBytes(const SavedList& list);
bool readContactCsv(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                    SavedListFault& fault);

/// Cards of vCard 2.1 for other programs. Those of a reading are made from the phone's own cards: they say
/// each text as those do, and keep the lines that a contact has no field for.
QByteArray contactCardBytes(const SavedList& list);
QByteArray contactCardBytes(const phonedata::ContactReading& reading);
/// Reads such cards. Lines that a contact has no field for are left out: the phone keeps its own ones.
bool readContactCards(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                      SavedListFault& fault);
/// Keys of the lines that readContactCards() leaves out although they hold something, such as "TEL;FAX". A
/// formatted name is none of them: the name itself is read.
QStringList droppedKeys(const QByteArray& bytes);

} // namespace kalmo::operations
