#pragma once

#include "toolkit/ListRows.h"
#include "toolkit/Progress.h"

#include <QStringList>

#include <vector>

namespace kalmo::transfer {

/// The choice of columns and rows of a list.
struct ExportChoice
{
    QList<int> columns = {}; ///< from 0, in the list's order
    bool onlySelected = false;
    bool useHeader = true;
    bool addEmptyLine = false; ///< below the header; without a header it has no effect
};

/// The texts that go out, row by row, without blanks at their ends.
struct ExportTable
{
    QStringList headings = {}; ///< empty where no header is wanted
    bool hasEmptyLine = false; ///< between the header and the rows
    std::vector<QStringList> rows = {};
    int columnCount = 0;

    bool hasHeader() const { return !headings.isEmpty(); }
    /// Header, empty line and rows together.
    int lineCount() const;
    /// Characters of the longest text in a column, the header included.
    qsizetype widestText(int column) const;
    /// Number of letters of the rows that the code page of .csv and .html files lacks.
    qsizetype lettersBeyondCodePage() const;
};

/// The chosen columns and rows of a list in its order of the moment. The bar goes one step with each row of
/// the list.
ExportTable makeExportTable(const toolkit::ListRows& list, const ExportChoice& choice,
                            const toolkit::Progress& progress = {});

/// A text without blanks at its ends; tabs and line ends stay.
QString trimBlanks(QStringView text);

} // namespace kalmo::transfer
