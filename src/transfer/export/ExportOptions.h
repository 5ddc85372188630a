#pragma once

#include "app/Context.h"
#include "transfer/export/CsvTarget.h"

namespace kalmo::transfer {

/// The list that is exported, and how the dialog offers it. It has to outlive the export.
struct ExportSource
{
    const toolkit::ListRows& list;   ///< its name keys all settings
    QString title;                   ///< "Telefonbuch"
    QList<int> hiddenColumns = {};   ///< from 0; not offered
    QList<int> untickedColumns = {}; ///< from 0; offered, but not ticked at first
    CsvSeparator defaultSeparator = CsvSeparator::Comma;

    /// The columns that are offered, in the list's order.
    QList<int> offeredColumns() const;
};

/// In the order in which they are offered and stored.
enum class Destination { Excel, Word, Csv, Html };

/// All that the user chooses.
struct ExportOptions
{
    Destination destination = Destination::Csv;
    CsvSeparator separator = CsvSeparator::Comma;
    QString replacement = QStringLiteral(" "); ///< of separators in the data
    QString csvPath = {};
    QString templatePath = {};
    QString htmlPath = {};
    bool useHeader = true;
    bool addEmptyLine = false;
    bool fitsWidths = true;
    bool closesAfterExport = false;
    bool opensFile = true;
    bool onlySelected = false;
    QList<int> columns = {}; ///< the ticked ones, from 0, in the list's order

    bool operator==(const ExportOptions&) const = default;
    ExportChoice choice() const { return {columns, onlySelected, useHeader, addEmptyLine}; }
};

/// The remembered options of that list, with defaults for what was never saved.
ExportOptions loadExportOptions(const app::Context& context, const ExportSource& source);
void SaveExportOptions(app::Context& context, const ExportSource& source, const ExportOptions& options);

/// The folder that a file dialog was last left in, by the dialog's name ("cmdlgPath"); empty if there is none
/// or it is gone.
QString lastDialogFolder(const app::Context& context, const ExportSource& source, const QString& dialog);
void setLastDialogFolder(app::Context& context, const ExportSource& source, const QString& dialog,
                         const QString& folder);

/// A message about a wrong path of an export or a template, empty for a good one. The folder is not checked.
QString exportPathFault(const QString& path);

} // namespace kalmo::transfer
