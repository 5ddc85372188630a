#pragma once

#include <QStyledItemDelegate>

namespace kalmo::ui {

/// Paints the cells of a list. It keeps numbers, which end at the right edge of their column, away from the
/// texts of the next one. A tool tip shows the whole of a text that is cut off, and the cell's own tip below.
class RowsDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    /// The width that the whole cell needs. All rows have the height of one line, or of a picture.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace kalmo::ui
