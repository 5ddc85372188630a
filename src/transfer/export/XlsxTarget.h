#pragma once

#include "transfer/export/ExportTable.h"
#include "transfer/export/OfficeText.h"

#include <QByteArray>

namespace kalmo::transfer {

/// A workbook, or the error that prevented it.
struct Workbook
{
    QByteArray bytes = {};
    int error = 0;       ///< a number of the library's, 0 for none
    QString reason = {}; ///< the same in its words
};

/// The table as a workbook with one sheet. Columns A to Z are text, so that a leading 0 and a "+" survive;
/// the header row stays in sight and is printed on every page. The library works with files: `scratchFolder`
/// has to exist, and holds nothing of them afterwards.
Workbook xlsxWorkbook(const ExportTable& table, const OfficeLook& look, const QString& scratchFolder);

} // namespace kalmo::transfer
