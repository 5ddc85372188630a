#pragma once

#include "toolkit/ListRows.h"

#include <QMimeData>

#include <functional>
#include <memory>

namespace kalmo::ui {

/// A form of the rows in the clipboard besides text: the media type and the bytes.
struct RowFormat
{
    QString mediaType = {};
    std::function<QByteArray(const toolkit::ListRow& row)> bytesOf = {};
};

/// The selected rows for the clipboard: cells separated by tabs, rows by line ends, and in `format` too if it
/// has a media type. Line ends and tabs in cells become blanks. Null if no row is selected.
std::unique_ptr<QMimeData> copiedRows(const toolkit::ListRows& rows, const RowFormat& format);

} // namespace kalmo::ui
