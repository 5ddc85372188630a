#include "ui/lists/RowsDelegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace kalmo::ui {

namespace {

constexpr int rowPadding = 8; // pixels above and below a line together

/// Pixels to the right of a number; 0 for other cells.
int marginOf(const QStyleOptionViewItem& option, const QModelIndex& index)
{
    const bool isNumber = index.data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight;
    return isNumber ? option.fontMetrics.averageCharWidth() * 2 : 0;
}

} // namespace

void RowsDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const
{
    QStyleOptionViewItem inner = option;
    if (const int margin = marginOf(option, index); margin > 0) {
        const QStyle& style = *option.widget->style();
        style.drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
        inner.rect.setRight(inner.rect.right() - margin);
    }
    QStyledItemDelegate::paint(painter, inner, index);
}

QSize RowsDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int width = QStyledItemDelegate::sizeHint(option, index).width() + marginOf(option, index);
    return {width, std::max(option.fontMetrics.height(), option.decorationSize.height()) + rowPadding};
}

bool RowsDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QStringList lines;
    if (sizeHint(option, index).width() > option.rect.width())
        lines.append(index.data().toString());
    if (const QString tip = index.data(Qt::ToolTipRole).toString(); !tip.isEmpty())
        lines.append(tip);
    if (lines.isEmpty())
        QToolTip::hideText();
    else
        QToolTip::showText(event->globalPos(), lines.join(u'\n'), view, option.rect);
    return true;
}

} // namespace kalmo::ui
