#pragma once

#include "operations/SavedLists.h"

namespace kalmo::cli {

/// "x.tel: line 3: the date is not of the form ...", without a full stop.
QString inWords(const operations::SavedListFault& fault, const QString& path, operations::SavedKind kind);

/// ".tel nor in .json", to come after "neither in".
QString endingsInWords(const QStringList& endings);

} // namespace kalmo::cli
