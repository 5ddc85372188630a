#include "ui/lists/RowsDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace kalmo::ui {

void RowsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem inner = option;
    if (index.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight) {
        const QStyle& style = *option.widget->style();
        style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        inner.rect.setRight(inner.rect.right() - option.fontMetrics.averageCharWidth() * 2);
    }
    QStyledItemDelegate::paint(painter, inner, index);
}

bool RowsDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // The base class knows the width that the whole cell needs, with its picture and margins.
    const bool isCut = QStyledItemDelegate::sizeHint(option, index).width() > option.rect.width() ||
                       option.fontMetrics.horizontalAdvance(index.data().toString()) > option.rect.width();
    if (isCut)
        QToolTip::showText(event->globalPos(), index.data().toString(), view, option.rect);
    else
        QToolTip::hideText();
    return true;
}

} // namespace kalmo::ui
