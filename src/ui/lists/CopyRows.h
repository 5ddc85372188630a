#pragma once

#include "toolkit/ListRows.h"

#include <QMimeData>

#include <functional>
#include <memory>

namespace kalmo::ui {

/// Gives what a row is in the clipboard beside its text: the media type and the bytes.
struct RowFormat
{
    QString mediaType = {};
    std::function<QByteArray(const toolkit::ListRow& row)> bytesOf = {};
};

/// The selected rows for the clipboard, cells parted by tabs, rows by line ends, and in `format` where it has
/// a media type. Line ends and tabs in cells become blanks. Null where no row is selected.
std::unique_ptr<QMimeData> copiedRows(const toolkit::ListRows& rows, const RowFormat& format);

} // namespace kalmo::ui
