#pragma once

#include "cli/Job.h"
#include "transfer/export/CsvTarget.h"

#include <utility>

namespace kalmo::cli {

/// Kinds of files that an export makes, in the order of the table of their endings.
enum class ExportKind { Csv, Xlsx, Docx, Html, Vcf };

/// The words of an export command, as far as they can be parsed without the list.
struct ExportOrder
{
    QString path = {}; ///< absolute
    ExportKind kind = ExportKind::Csv;
    QString from = {}; ///< saved list; empty for the phone's
    std::optional<QStringList> columns = {};
    std::optional<QList<std::pair<int, int>>> rows = {}; ///< first and last of each range, from 1
    bool useHeader = true;
    bool addEmptyLine = false;
    bool fitsWidths = true;
    bool mayOverwrite = false;
    transfer::CsvSeparator separator = transfer::CsvSeparator::Comma;
    QString replacement = QStringLiteral(" ");
    QString templatePath = {}; ///< for pages
};

/// Parses the words of the command. Returns nothing, with the reason in `error`, for words that make no
/// export.
std::optional<ExportOrder> exportOrder(const Job& job, QString& error);

/// Numbers of columns by their headings, in any case; of two equal headings the first one counts. Gives them
/// in the list's order. Returns nothing, with the reason in `error`, if a heading is not among them.
std::optional<QList<int>> columnsByHeading(const toolkit::ListRows& list, const QList<int>& offered,
                                           const QStringList& headings, QString& error);

/// Selects the rows of these ranges in a list, and no others. Returns false, with the reason in `error`, if
/// the list has fewer.
bool selectRows(toolkit::ListRows& list, const QList<std::pair<int, int>>& ranges, QString& error);

} // namespace kalmo::cli
