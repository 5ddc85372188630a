#pragma once

#include "transfer/export/ExportTable.h"

#include <QByteArray>

namespace kalmo::transfer {

/// The row as a card for other programs, in the form of vCard 2.1. An entry of a classic list has its name as
/// the last name, its number as the one at home, and of its anniversary the day without a year ("--12-24").
QByteArray vcfCardOf(const toolkit::ListRow& row);

/// The chosen rows of a list as such cards. Cells of columns that are not chosen are left out; header and
/// empty line mean nothing here.
QByteArray vcfBytes(const toolkit::ListRows& list, const ExportChoice& choice);

} // namespace kalmo::transfer
