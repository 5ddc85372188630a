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

/// A row for the clipboard: cells separated by tabs. Line ends and tabs in cells become blanks.
QString copiedLine(const QStringList& cells);

/// The selected rows for the clipboard: one line for each, and in `format` too if it has a media type. Null
/// if no row is selected.
std::unique_ptr<QMimeData> copiedRows(const toolkit::ListRows& rows, const RowFormat& format);

} // namespace kalmo::ui
