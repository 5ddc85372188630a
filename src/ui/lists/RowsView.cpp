#include "ui/lists/RowsView.h"

#include <QClipboard>
#include <QDrag>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

namespace kalmo::ui {

using toolkit::ListRows;

namespace {

void setSelected(ListRows& rows, const QItemSelection& selection, bool on)
{
    for (const QItemSelectionRange& range : selection) {
        for (int row = range.top(); row <= range.bottom() && row < rows.count(); ++row)
            rows.setSelected(row, on);
    }
}

} // namespace

RowsView::RowsView(QWidget* parent) : FilteredView(parent), m_model(new RowsModel(this))
{
    setModel(m_model);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    header()->setSectionsClickable(true);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    connect(header(), &QHeaderView::sectionClicked, this, &RowsView::sortByHeader);
    connect(this, &QTreeView::doubleClicked, this,
            [this](const QModelIndex& index) { Q_EMIT rowDoubleClicked(index.row()); });
    // After the base class has taken over the new order.
    connect(m_model, &QAbstractItemModel::modelReset, this, &RowsView::showSelection, Qt::DirectConnection);
}

void RowsView::setRows(ListRows& rows)
{
    if (ListRows* old = this->rows())
        old->disconnect(this);
    m_model->setRows(&rows);
    setObjectName(rows.name());
    connect(&rows, &ListRows::selectionChanged, this, [this] {
        if (!m_syncing)
            showSelection();
    });
    connect(&rows, &ListRows::currentChanged, this, &RowsView::showCurrent);
    showSelection();
}

void RowsView::setPictureSize(int pixels)
{
    setIconSize({pixels, pixels});
}

void RowsView::setPlaceholder(const QString& text)
{
    m_placeholder = text;
    showSentence();
}

void RowsView::setNote(const QString& text)
{
    m_note = text;
    showSentence();
}

QString RowsView::ownSentence() const
{
    if (!m_note.isEmpty())
        return m_note;
    return m_model->rowCount() == 0 ? m_placeholder : QString();
}

void RowsView::setColumnCharacters(const QList<int>& characters)
{
    const int width = fontMetrics().averageCharWidth();
    for (int column = 0; column < characters.size(); ++column)
        setColumnWidth(column, (characters[column] + 3) * width);
}

void RowsView::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid()) {
        Q_EMIT rowDoubleClicked(currentIndex().row());
        return;
    }
    FilteredView::keyPressEvent(event);
}

void RowsView::setDragSource(DragSource source)
{
    m_dragSource = std::move(source);
    setDragEnabled(m_dragSource != nullptr);
}

void RowsView::startDrag(Qt::DropActions)
{
    std::unique_ptr<QMimeData> content = dragContent();
    if (!content)
        return;
    auto* drag = new QDrag(this); // deletes itself
    drag->setMimeData(content.release());
    if (drag->exec(Qt::CopyAction) != Qt::IgnoreAction)
        Q_EMIT dragDropped();
}

void RowsView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    if (m_syncing || !rows())
        return;
    const QScopedValueRollback syncing(m_syncing, true);
    setSelected(*rows(), deselected, false);
    setSelected(*rows(), selected, true);
}

void RowsView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTreeView::currentChanged(current, previous);
    if (rows() && !m_syncing)
        rows()->noteCurrent(current.row());
}

void RowsView::sortByHeader(int column)
{
    ListRows* list = rows();
    // Also where a listing has switched sorting off.
    const bool turns = header()->isSortIndicatorShown() && list->sortColumn() == column;
    const bool wasAscending = list->sortOrder() == Qt::AscendingOrder;
    sortBy(column, turns && wasAscending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void RowsView::sortBy(int column, Qt::SortOrder order)
{
    rows()->sortBy(column, order);
    header()->setSortIndicatorShown(true);
    header()->setSortIndicator(column, order);
}

void RowsView::showSelection()
{
    if (!rows())
        return;
    const QScopedValueRollback syncing(m_syncing, true);
    selectionModel()->select(rangesOf([this](int row) { return rows()->row(row).selected; }),
                             QItemSelectionModel::ClearAndSelect);
    const int current = rows()->current();
    if (current >= 0 && current != currentIndex().row())
        selectionModel()->setCurrentIndex(m_model->index(current, 0), QItemSelectionModel::NoUpdate);
}

void RowsView::showCurrent(int row)
{
    if (row < 0 || row >= m_model->rowCount())
        return;
    if (isRowHidden(row, {}) && !m_syncing)
        setFilter({});
    scrollTo(m_model->index(row, 0));
}

void RowsView::leaveHidden(int first, int last)
{
    const QScopedValueRollback syncing(m_syncing, true);
    for (int row = first; row <= last; ++row) {
        rows()->setHidden(row, isRowHidden(row, {}));
        if (rows()->row(row).hidden)
            rows()->setSelected(row, false);
    }
    if (const int current = rows()->current(); current >= 0 && rows()->row(current).hidden) {
        rows()->noteCurrent(-1);
        selectionModel()->clearCurrentIndex();
    }
    showSelection();
}

void RowsView::copySelected() const
{
    if (!rows())
        return;
    if (auto copied = copiedRows(*rows(), m_format))
        QGuiApplication::clipboard()->setMimeData(copied.release()); // takes ownership
}

void RowsView::keyboardSearch(const QString& letters)
{
    if (!rows() || (letters.trimmed().isEmpty() && !m_typeAhead.isTyping()))
        return; // a blank alone selects
    const int row = m_typeAhead.find(*rows(), letters, [this](int each) { return !isRowHidden(each, {}); });
    if (row >= 0)
        rows()->setCurrent(row);
}

} // namespace kalmo::ui
