#pragma once

#include <QStyledItemDelegate>

namespace kalmo::ui {

/// Paints the cells of a list: keeps numbers, which end at the right edge of their column, off the texts of
/// the next one, and shows a text that is cut off whole in a tool tip.
class RowsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace kalmo::ui
