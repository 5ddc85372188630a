#pragma once

#include "toolkit/ListRows.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QPointer>

#include <functional>

namespace kalmo::ui {

/// Gives the picture of a row's icon key.
using IconSource = std::function<QIcon(const QString& key)>;

/// Shows a list's rows to a view. The rows stay where they are: nothing is copied.
class RowsModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit RowsModel(QObject* parent = nullptr) : QAbstractTableModel(parent) {}

    /// The rows stay until the next rows or the model's end, or go just before it: nothing touches them then.
    void setRows(toolkit::ListRows* rows);
    toolkit::ListRows* rows() const { return m_rows; }
    void setIconSource(IconSource icons) { m_icons = std::move(icons); }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QVariant alignmentOf(int column) const;

    QPointer<toolkit::ListRows> m_rows;
    IconSource m_icons;
};

} // namespace kalmo::ui
