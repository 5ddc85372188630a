#include "ui/lists/RowsModel.h"

namespace kalmo::ui {

using toolkit::ListRows;

namespace {

const QString titleMargin(2, QChar::Nbsp); // as far from the edge as the numbers below

} // namespace

void RowsModel::setRows(ListRows* rows)
{
    beginResetModel();
    if (m_rows)
        m_rows->disconnect(this);
    m_rows = rows;
    endResetModel();
    if (!rows)
        return;
    connect(rows, &ListRows::aboutToInsert, this,
            [this](int first, int last) { beginInsertRows({}, first, last); });
    connect(rows, &ListRows::inserted, this, [this] { endInsertRows(); });
    connect(rows, &ListRows::aboutToRemove, this,
            [this](int first, int last) { beginRemoveRows({}, first, last); });
    connect(rows, &ListRows::removed, this, [this] { endRemoveRows(); });
    connect(rows, &ListRows::aboutToReset, this, [this] { beginResetModel(); });
    connect(rows, &ListRows::reset, this, [this] { endResetModel(); });
    connect(rows, &ListRows::changed, this,
            [this](int row) { Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1)); });
}

int RowsModel::rowCount(const QModelIndex& parent) const
{
    return m_rows && !parent.isValid() ? m_rows->count() : 0;
}

int RowsModel::columnCount(const QModelIndex& parent) const
{
    return m_rows && !parent.isValid() ? static_cast<int>(m_rows->columns().size()) : 0;
}

QVariant RowsModel::data(const QModelIndex& index, int role) const
{
    if (!m_rows || !index.isValid() || index.row() >= m_rows->count())
        return {};
    const toolkit::ListRow& row = m_rows->row(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return row.text(index.column());
    case Qt::DecorationRole:
        return index.column() == 0 && m_icons && !row.icon.isEmpty() ? m_icons(row) : QVariant();
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    default:
        return {};
    }
}

Qt::ItemFlags RowsModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags own = QAbstractTableModel::flags(index);
    return index.isValid() ? own | Qt::ItemIsDragEnabled : own;
}

QVariant RowsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (!m_rows || orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    if (role != Qt::DisplayRole)
        return {};
    const QString& title = m_rows->columns()[section].title;
    return alignmentOf(section).isNull() ? title : title + titleMargin;
}

/// Numbers are aligned right, and so is their title. All else is up to the view.
QVariant RowsModel::alignmentOf(int column) const
{
    const bool isNumber = column > 0 && m_rows->columns()[column].isNumber;
    return isNumber ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
}

} // namespace kalmo::ui
