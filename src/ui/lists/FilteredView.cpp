#include "ui/lists/FilteredView.h"

#include "ui/lists/CopyRows.h"
#include "ui/lists/RowsDelegate.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>

#include <algorithm>

namespace kalmo::ui {

FilteredView::FilteredView(QWidget* parent) : QTreeView(parent)
{
    setItemDelegate(new RowsDelegate(this));
    setRootIsDecorated(false);
    setItemsExpandable(false);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setAlternatingRowColors(true);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    connect(this, &FilteredView::filtered, this, &FilteredView::showSentence);
}

void FilteredView::setModel(QAbstractItemModel* model)
{
    QTreeView::setModel(model);
    // After the base class has followed the model.
    connect(model, &QAbstractItemModel::modelReset, this, [this] {
        if (isFiltered())
            applyFilter(0, lastRow());
    });
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first, int last) {
        if (isFiltered())
            applyFilter(first, last);
    });
    connect(model, &QAbstractItemModel::rowsRemoved, this, &FilteredView::filtered);
    connect(model, &QAbstractItemModel::modelReset, this, &FilteredView::showSentence);
    connect(model, &QAbstractItemModel::rowsInserted, this, &FilteredView::showSentence);
}

void FilteredView::setFilter(const QString& typed)
{
    const bool wasFiltered = isFiltered();
    m_filter = toolkit::RowFilter(typed);
    if (!isFiltered() && !wasFiltered)
        return;
    applyFilter(0, lastRow());
    scrollTo(currentIndex());
}

QStringList FilteredView::textsOf(int row) const
{
    QStringList texts;
    for (int column = 0; column < model()->columnCount(); ++column)
        texts.append(model()->index(row, column).data().toString());
    return texts;
}

/// Hides those of the rows that do not match. New rows are shown.
void FilteredView::applyFilter(int first, int last)
{
    for (int row = first; row <= last; ++row)
        setRowHidden(row, {}, isFiltered() && !m_filter.matches(textsOf(row)));
    leaveHidden(first, last);
    Q_EMIT filtered();
}

void FilteredView::leaveHidden(int first, int last)
{
    const QItemSelection hidden =
        rangesOf([&](int row) { return row >= first && row <= last && isRowHidden(row, {}); });
    selectionModel()->select(hidden, QItemSelectionModel::Deselect);
    if (currentIndex().isValid() && isRowHidden(currentIndex().row(), {}))
        selectionModel()->clearCurrentIndex();
}

QItemSelection FilteredView::rangesOf(const std::function<bool(int row)>& isIn) const
{
    QItemSelection ranges;
    const int lastColumn = model()->columnCount() - 1;
    for (int first = 0; first <= lastRow(); ++first) {
        if (!isIn(first))
            continue;
        int last = first;
        while (last < lastRow() && isIn(last + 1))
            ++last;
        ranges.append(QItemSelectionRange(model()->index(first, 0), model()->index(last, lastColumn)));
        first = last;
    }
    return ranges;
}

int FilteredView::shownRows() const
{
    int shown = 0;
    for (int row = 0; row <= lastRow(); ++row)
        shown += !isRowHidden(row, {});
    return shown;
}

int FilteredView::firstShown(int from) const
{
    for (int row = from; row <= lastRow(); ++row) {
        if (!isRowHidden(row, {}))
            return row;
    }
    return -1;
}

int FilteredView::lastShown(int from) const
{
    while (from >= 0 && isRowHidden(from, {}))
        --from;
    return from;
}

void FilteredView::rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last)
{
    if (const int current = currentIndex().row(); current >= first && current <= last) {
        const int next = firstShown(last + 1);
        const int place = next >= 0 ? next : lastShown(first - 1);
        selectionModel()->setCurrentIndex(model()->index(place, 0), QItemSelectionModel::NoUpdate);
    }
    QTreeView::rowsAboutToBeRemoved(parent, first, last);
}

QString FilteredView::sentence() const
{
    if (lastRow() >= 0 && firstShown() < 0)
        return QStringLiteral("Nichts gefunden. Esc zeigt wieder alle.");
    return ownSentence();
}

void FilteredView::showSentence()
{
    setAccessibleDescription(sentence());
    viewport()->update();
}

/// The pixel row below the last row that is shown; 0 without any.
int FilteredView::bottomOfRows() const
{
    const int row = lastShown(lastRow());
    return row < 0 ? 0 : visualRect(model()->index(row, 0)).bottom();
}

void FilteredView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    const QString text = sentence();
    const int margin = fontMetrics().height() * 2;
    const QRect place = viewport()->rect().adjusted(margin, bottomOfRows() + margin, -margin, 0);
    if (text.isEmpty() || place.isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Active, QPalette::Text)); // readable when disabled too
    painter.drawText(place, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, text);
}

void FilteredView::enter()
{
    setFocus(Qt::OtherFocusReason);
    if (selectionModel()->hasSelection())
        return;
    if (const int row = currentIndex().isValid() ? currentIndex().row() : firstShown(); row >= 0)
        setCurrentIndex(model()->index(row, 0));
}

void FilteredView::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy)) // the base class copies one cell only
        copySelected();
    else
        QTreeView::keyPressEvent(event);
    // Enter leads from the search into the list. A second one must not reach the default button of a dialog.
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->accept();
}

void FilteredView::copySelected() const
{
    QList<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        rows.append(index.row());
    std::ranges::sort(rows);
    QString text;
    for (const int row : std::as_const(rows))
        text += copiedLine(textsOf(row)) + u'\n';
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

} // namespace kalmo::ui
