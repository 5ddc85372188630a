#include "transfer/export/XlsxTarget.h"

#include "app/Files.h"
#include "transfer/export/ZipFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <algorithm>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

constexpr lxw_col_t lastTextColumn = 25; // Z
constexpr double widthOfBorder = 2;      // characters beside the longest text
constexpr double narrowest = 8.43;       // characters; what a sheet's columns have
constexpr double widest = 60;
constexpr qsizetype longestText = 32767; // that a cell takes

/// Writes the cells, with the first error of the library kept.
class SheetWriter
{
public:
    SheetWriter(lxw_workbook* book, const OfficeLook& look)
        : m_look(look), m_sheet(workbook_add_worksheet(book, look.title.toUtf8().constData())),
          m_text(workbook_add_format(book)), m_bold(workbook_add_format(book))
    {
        format_set_num_format(m_text, "@");
        format_set_num_format(m_bold, "@");
        format_set_bold(m_bold);
        format_set_bottom(m_bold, LXW_BORDER_THIN);
    }

    lxw_error write(const ExportTable& table)
    {
        if (!m_sheet)
            return LXW_ERROR_PARAMETER_VALIDATION;
        setColumns(table);
        setPage(table);
        lxw_row_t line = 0;
        if (table.hasHeader())
            writeRow(line++, table.headings, m_bold);
        if (table.hasEmptyLine)
            ++line;
        for (const QStringList& row : table.rows)
            writeRow(line++, row, m_text);
        return m_error;
    }

private:
    void note(lxw_error error)
    {
        if (m_error == LXW_NO_ERROR)
            m_error = error;
    }

    /// Each column is set once: the library forgets a range whose first column is set again.
    void setColumns(const ExportTable& table)
    {
        lxw_col_t next = 0;
        for (; m_look.fitsWidths && next < table.columnCount; ++next) {
            const double width = static_cast<double>(table.widestText(next)) + widthOfBorder;
            note(worksheet_set_column(m_sheet, next, next, std::clamp(width, narrowest, widest),
                                      formatOf(next, m_text)));
        }
        if (next <= lastTextColumn)
            note(worksheet_set_column(m_sheet, next, lastTextColumn, narrowest, m_text));
    }

    void setPage(const ExportTable& table)
    {
        worksheet_set_paper(m_sheet, 9); // A4
        worksheet_set_landscape(m_sheet);
        worksheet_fit_to_pages(m_sheet, 1, 0);
        note(worksheet_ignore_errors(m_sheet, LXW_IGNORE_NUMBER_STORED_AS_TEXT, "A1:Z1048576"));
        if (!table.hasHeader())
            return;
        worksheet_freeze_panes(m_sheet, 1, 0);
        note(worksheet_repeat_rows(m_sheet, 0, 0));
    }

    void writeRow(lxw_row_t line, const QStringList& cells, lxw_format* format)
    {
        lxw_col_t column = 0;
        for (const QString& cell : cells) {
            const QByteArray text = xmlText(cell.left(longestText)).toUtf8();
            note(worksheet_write_string(m_sheet, line, column, text.constData(), formatOf(column, format)));
            ++column;
        }
    }

    /// Columns beyond Z have no format of their own.
    static lxw_format* formatOf(lxw_col_t column, lxw_format* format)
    {
        return column <= lastTextColumn ? format : nullptr;
    }

    const OfficeLook& m_look;
    lxw_worksheet* m_sheet;
    lxw_format* m_text;
    lxw_format* m_bold;
    lxw_error m_error = LXW_NO_ERROR;
};

Workbook failed(lxw_error error)
{
    return {.error = error, .reason = QString::fromUtf8(lxw_strerror(error))};
}

/// The library does not notice that a full disk cut its parts off.
bool isWhole(const QByteArray& workbook)
{
    return zipPart(workbook, "xl/worksheets/sheet1.xml").value_or(QByteArray()).endsWith("</worksheet>") &&
           zipPart(workbook, "xl/sharedStrings.xml").value_or("</sst>").endsWith("</sst>");
}

} // namespace

Workbook xlsxWorkbook(const ExportTable& table, const OfficeLook& look, const QString& scratchFolder)
{
    const QTemporaryDir scratch(QDir(scratchFolder).filePath(u"Tabelle-XXXXXX"_s));
    if (!scratch.isValid())
        return failed(LXW_ERROR_CREATING_TMPFILE);
    const QString path = scratch.filePath(u"Tabelle.xlsx"_s);
    const QByteArray encodedPath = QFile::encodeName(path);
    QByteArray encodedFolder = QFile::encodeName(scratch.path());
    lxw_workbook_options options{};
    options.tmpdir = encodedFolder.data();
    lxw_workbook* book = workbook_new_opt(encodedPath.constData(), &options);
    if (!book)
        return failed(LXW_ERROR_MEMORY_MALLOC_FAILED);
    const lxw_error filled = SheetWriter(book, look).write(table);
    const lxw_error closed = workbook_close(book); // frees it, too
    if (filled != LXW_NO_ERROR || closed != LXW_NO_ERROR)
        return failed(filled != LXW_NO_ERROR ? filled : closed);
    Workbook workbook;
    if (!app::readWholeFile(path, workbook.bytes) || !isWhole(workbook.bytes))
        return failed(LXW_ERROR_ZIP_FILE_OPERATION);
    return workbook;
}

} // namespace kalmo::transfer
