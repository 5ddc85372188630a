#pragma once

#include "cli/EntryFiles.h"

#include <QJsonArray>

namespace kalmo::cli {

/// Entries as an array of objects: `name`, `number`, and in the phonebook `date`, `dateSound`, `vip`,
/// `vipSound`. All are texts as the window shows them, but `vip`, which is true or false.
QJsonArray entryJson(const Entries& entries, phonedata::Store store);

QByteArray entryJsonBytes(const Entries& entries, phonedata::Store store);

} // namespace kalmo::cli
