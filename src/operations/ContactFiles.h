#pragma once

#include "operations/SavedLists.h"

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

/// Cards for other programs.
QByteArray contactCardBytes(const SavedList& list);

} // namespace kalmo::operations
