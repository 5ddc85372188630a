#pragma once

#include "operations/SavedLists.h"

#include <QJsonArray>

namespace kalmo::operations {

/// Entries as an array of objects: `name`, `number`, and in the phonebook `date`, `dateSound`, `vip`,
/// `vipSound`. All are texts as the window shows them, but `vip`, which is true or false.
QJsonArray entryJson(const SavedList& list);

QByteArray entryJsonBytes(const SavedList& list);
bool readEntryJson(const QByteArray& bytes, const ReadingRules& rules, SavedList& list,
                   SavedListFault& fault);

} // namespace kalmo::operations
