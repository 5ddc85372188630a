#pragma once

#include "toolkit/ListRows.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QPointer>

#include <functional>

namespace kalmo::ui {

/// Gives the picture of a row.
using IconSource = std::function<QIcon(const toolkit::ListRow& row)>;

/// Shows a list's rows to a view without copying them.
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit RowsModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// The rows have to exist until the next rows are set. As members of the view's parent they may be
    /// destroyed just before the model.
    void setRows(toolkit::ListRows* rows);
    toolkit::ListRows* rows() const { return m_rows; }
    void setIconSource(IconSource icons) { m_icons = std::move(icons); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    /// Rows may be dragged out of a view that allows it.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVariant alignmentOf(int column) const;

    QPointer<toolkit::ListRows> m_rows;
    IconSource m_icons;
};

} // namespace kalmo::ui
