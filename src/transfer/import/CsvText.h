#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

enum class Separator { Comma, Semicolon, Tab };
enum class Reading {
    Simple, ///< a line is a row, and is split at each separator with the filter text around it
    Csv     ///< RFC 4180: quotes only where needed, doubled within a cell, line ends in cells
};

QChar separatorChar(Separator separator);

/// How a text is laid out.
struct TextLayout
{
    Separator separator = Separator::Semicolon;
    QString filter = {}; ///< `txtCsvImportUmklammernd`: the text around the cells, empty for none
    Reading reading = Reading::Simple;

    bool operator==(const TextLayout&) const = default;
};

/// The layout as guessed from the first lines of a text.
struct DetectedLayout
{
    Separator separator = Separator::Semicolon;
    bool quoted = false;
};

/// Guesses from the first four lines. The three tests for quotes are unlike on purpose: without separators
/// and quotes a text counts as quoted.
DetectedLayout DetectCsvSeparator(QStringView text);

/// Number of places in `text` where `needle` starts. Part of the described interface.
qsizetype CountOccurrences(QStringView text, QStringView needle);

/// The quote of the reading Csv: RFC 4180 knows one, and a filter of one character stands in for it.
QChar csvQuoteOf(const TextLayout& layout);

/// Removes and returns the first line of a text. Lines end at CR LF, LF or CR.
QStringView takeLine(QStringView& text);

/// The headings of a text: the cells of its first line. By the simple reading every single character of the
/// filter is taken out of the line, and a line without the separator has no headings.
QStringList headingsOf(QStringView text, const TextLayout& layout);

/// More columns than this are refused, so that no file takes memory without bound.
inline constexpr qsizetype mostColumns = 16384;

/// Walks the rows of a text, the first line included; empty lines are no rows. The cells of a row last until
/// the next one.
class RowCursor
{
public:
    RowCursor(QStringView text, const TextLayout& layout);

    bool next();
    /// Number of columns of the first row; surplus cells of other rows are dropped.
    qsizetype columns() const { return m_columns; }
    /// A cell of the row, with all filter texts taken out; empty where the row has none.
    QString cell(qsizetype column) const;
    /// Returns true unless the row has a quote where RFC 4180 has none. For the reading Csv.
    bool isValid() const { return m_valid; }

private:
    bool nextSimple();
    bool nextCsv();
    bool takeCsvCell();
    void takeQuotedCell();
    void keep(QStringView cell);

    QStringView m_rest;
    QChar m_separator;
    QString m_filter;
    QString m_needle; // the simple reading splits at it
    QChar m_quote;
    Reading m_reading;
    qsizetype m_columns = 0;
    std::vector<QStringView> m_cells;
    std::vector<QString> m_unquoted; // cells that are not found in the text as they are
    bool m_valid = true;
};

/// Number of rows that differ between the simple reading and RFC 4180 with the quote of the layout. 0 for a
/// text without quotes, or one that is not valid by RFC 4180.
int rowsBetterReadAsCsv(QStringView text, const TextLayout& layout);

} // namespace kalmo::transfer
