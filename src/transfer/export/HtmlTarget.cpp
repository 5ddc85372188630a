#include "transfer/export/HtmlTarget.h"

#include "app/CodePage.h"

#include <QDir>

#include <array>

namespace kalmo::transfer {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<QByteArrayView, 2> titleMarks = {"$Document.Title$", "$Table.Title$"};
constexpr QByteArrayView evenRow = "tablestyle1";
constexpr QByteArrayView oddRow = "tablestyle2";

void addRow(QByteArray& html, QByteArrayView style, QByteArrayView cellTag, const QStringList& cells)
{
    html.append("\t\t<tr class=\"").append(style).append("\">\r\n");
    for (const QString& cell : cells)
        html.append("\t\t\t").append(cellTag).append(app::toCp1252(cell)).append("</td>\r\n");
    html.append("\t\t</tr>\r\n");
}

QByteArray tableRows(const ExportTable& table)
{
    QByteArray html;
    if (table.hasHeader())
        addRow(html, "tableheader", "<td>", table.headings);
    bool isOdd = true; // the stripes count exported rows only
    for (const QStringList& row : table.rows) {
        addRow(html, isOdd ? oddRow : evenRow, "<td valign=\"top\">", row);
        isOdd = !isOdd;
    }
    return html;
}

} // namespace

std::optional<QByteArray> filledTemplate(const QByteArray& page, const QString& title,
                                         const ExportTable& table)
{
    if (!page.contains(tableMark))
        return {};
    QByteArray filled = page;
    // The titles come first: after the rows their marks could stand in cells, too.
    for (const QByteArrayView mark : titleMarks)
        filled.replace(mark, app::toCp1252(title));
    return filled.replace(tableMark, tableRows(table));
}

QString templateFolder(const app::Sy& sy)
{
    return QDir(sy.Paths.Exe).filePath(u"ExportVorlagen"_s);
}

QString defaultTemplate(const app::Sy& sy)
{
    return QDir(templateFolder(sy)).filePath(u"ExportVorlage.html"_s);
}

} // namespace kalmo::transfer
