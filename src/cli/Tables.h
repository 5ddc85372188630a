#pragma once

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace kalmo::cli {

/// Text that a terminal can be given: control characters, which may come from a phone or a file and would
/// steer the terminal, become "?".
QString printable(QString text);
/// The same for whole lines: their ends stay.
QString printableLines(const QString& text);

/// Rows under headings, in columns that are as wide as their widest cell. Lines end without blanks.
QString alignedTable(const QStringList& headings, const std::vector<QStringList>& rows);

/// One line for each name and value, with the values in one column. A value that is empty shows as "-".
QString alignedFields(const std::vector<std::pair<QString, QString>>& fields);

} // namespace kalmo::cli
