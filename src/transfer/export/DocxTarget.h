#pragma once

#include "transfer/export/ExportTable.h"
#include "transfer/export/OfficeText.h"

#include <QByteArray>

#include <optional>

namespace kalmo::transfer {

/// The table as a document of landscape pages that holds nothing else. The header row comes again on every
/// page, and no row is parted between two. Columns are as wide as their longest text, then the table may be
/// wider than the page; or they share the width of the page. The format is that of ECMA-376. Nothing if the
/// archive can't be made.
std::optional<QByteArray> docxBytes(const ExportTable& table, const OfficeLook& look);

} // namespace kalmo::transfer
