#pragma once

#include "app/Sy.h"
#include "transfer/export/ExportTable.h"

#include <QByteArray>

#include <optional>

namespace kalmo::transfer {

/// The place for the rows of the table. A template has to contain it.
inline constexpr QByteArrayView tableMark = "<$Table.Content$>";

/// A template with the table and its title in place of the marks; nothing if it has no place for the table.
/// Every other byte stays. Texts go in unchanged, in the code page: `<` and marks in cells have no effect.
std::optional<QByteArray> filledTemplate(const QByteArray& page, const QString& title,
                                         const ExportTable& table);

/// The folder of the templates that come with the program: beside it.
QString templateFolder(const app::Sy& sy);
/// The template that is used unless the user has another.
QString defaultTemplate(const app::Sy& sy);

} // namespace kalmo::transfer
