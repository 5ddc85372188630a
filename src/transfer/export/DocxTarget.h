#pragma once

#include "transfer/export/ExportTable.h"
#include "transfer/export/OfficeText.h"

#include <QByteArray>

#include <optional>

namespace kalmo::transfer {

/// The table as a document of landscape pages that holds nothing else. The header row repeats on every page,
/// and no row continues on the next one. Columns are as wide as their longest text, even beyond the page; or
/// they share its width. The format is that of ECMA-376. Returns nothing if the archive can't be made.
std::optional<QByteArray> docxBytes(const ExportTable& table, const OfficeLook& look);

} // namespace kalmo::transfer
