#pragma once

#include "app/Sy.h"
#include "transfer/export/ExportTable.h"

#include <QByteArray>

#include <optional>

namespace kalmo::transfer {

/// The place in a template that the rows of the table go to. A template without it is none.
inline constexpr QByteArrayView tableMark = "<$Table.Content$>";

/// A template with the table and its title in place of the marks; nothing if it has no place for the table.
/// Every other byte of it stays. Texts go in as they are, in the code page: neither `<` nor a mark in a cell
/// means anything.
std::optional<QByteArray> filledTemplate(const QByteArray& page, const QString& title,
                                         const ExportTable& table);

/// The folder of the templates that come with the program: beside it.
QString templateFolder(const app::Sy& sy);
/// The template that is used unless the user has another.
QString defaultTemplate(const app::Sy& sy);

} // namespace kalmo::transfer
