#include "ui/lists/CopyRows.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

QStringList textsOf(const toolkit::ListRow& row)
{
    QStringList texts;
    for (const toolkit::ListCell& cell : row.cells)
        texts.append(cell.text);
    return texts;
}

} // namespace

QString copiedLine(const QStringList& cells)
{
    QStringList clean;
    for (const QString& cell : cells)
        clean.append(QString(cell).replace(u'\t', u' ').replace(u'\n', u' ').remove(u'\r'));
    return clean.join(u'\t');
}

std::unique_ptr<QMimeData> copiedRows(const toolkit::ListRows& rows, const RowFormat& format)
{
    const QList<int> selected = rows.selectedRows();
    if (selected.isEmpty())
        return nullptr;
    QStringList lines;
    QByteArray bytes;
    for (const int row : selected) {
        lines.append(copiedLine(textsOf(rows.row(row))));
        if (format.bytesOf)
            bytes += format.bytesOf(rows.row(row));
    }
    auto copied = std::make_unique<QMimeData>();
    copied->setText(lines.join(u'\n') + u'\n');
    if (!format.mediaType.isEmpty())
        copied->setData(format.mediaType, bytes);
    return copied;
}

} // namespace kalmo::ui
