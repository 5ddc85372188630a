#include "ui/controls/FormScroll.h"

#include "ui/controls/ScreenRoom.h"

#include <QApplication>
#include <QEvent>
#include <QScrollBar>
#include <QShowEvent>
#include <QVBoxLayout>

#include <algorithm>

namespace kalmo::ui {

namespace {

/// What the window needs around one of its parts: margins at both sides, and the rows above and below.
QSize neededAround(const QWidget& part)
{
    QSize needed;
    for (const QWidget* inner = &part; inner->parentWidget(); inner = inner->parentWidget()) {
        const auto* column = qobject_cast<const QVBoxLayout*>(inner->parentWidget()->layout());
        if (!column)
            continue;
        needed = needed.grownBy(column->contentsMargins());
        needed.rheight() += column->spacing() * (column->count() - 1);
        for (int index = 0; index < column->count(); ++index) {
            QLayoutItem* item = column->itemAt(index);
            if (item->widget() != inner)
                needed.rheight() += item->minimumSize().height();
        }
    }
    return needed;
}

} // namespace

FormScroll::FormScroll(QWidget* content, QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(NoFrame);
    setFocusPolicy(Qt::NoFocus); // the controls have it
    setWidget(content);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* focus) {
        // What a mouse button is pressed on must not move away before the release.
        const bool isByMouse = QGuiApplication::mouseButtons() != Qt::NoButton;
        if (focus && !isByMouse && widget()->isAncestorOf(focus))
            ensureWidgetVisible(focus);
    });
}

QSize FormScroll::sizeHint() const
{
    return widget()->sizeHint();
}

/// The least size of the content, or what the screen leaves of it, with the bar that scrolls it then. The
/// height for wrapped texts is known only with the width.
QSize FormScroll::minimumSizeHint() const
{
    const QSize room = roomOnScreen(*window()) - neededAround(*this);
    QSize least = widget()->minimumSizeHint();
    const int height = leastHeight(std::max(isVisible() ? width() : 0, least.width()));
    if (isVisible())
        least.setHeight(height);
    if (height > room.height())
        least.rwidth() += verticalScrollBar()->sizeHint().width();
    return least.boundedTo(room);
}

bool FormScroll::hasHeightForWidth() const
{
    return widget()->layout()->hasHeightForWidth();
}

int FormScroll::heightForWidth(int width) const
{
    return widget()->layout()->totalHeightForWidth(width);
}

int FormScroll::leastHeight(int width) const
{
    const QLayout& rows = *widget()->layout();
    const int least = rows.totalMinimumSize().height();
    return rows.hasHeightForWidth() ? std::max(least, rows.totalMinimumHeightForWidth(width)) : least;
}

/// Gives the content the room that the area has, and never less than it needs.
void FormScroll::fitContent()
{
    QSize room = maximumViewportSize();
    const int leastWidth = widget()->minimumSizeHint().width();
    if (leastWidth > room.width())
        room.rheight() -= horizontalScrollBar()->sizeHint().height();
    const auto needed = [&] { return leastHeight(std::max(room.width(), leastWidth)); };
    if (needed() > room.height())
        room.rwidth() -= verticalScrollBar()->sizeHint().width();
    widget()->resize(room.expandedTo({leastWidth, needed()}));
}

void FormScroll::resizeEvent(QResizeEvent* event)
{
    fitContent();
    QScrollArea::resizeEvent(event);
    if (event->oldSize().width() != event->size().width())
        updateGeometry();
}

/// A form that nobody has sized opens high enough for its content: the toolkit gives it two thirds of the
/// screen at most.
void FormScroll::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    const int missing = widget()->height() - viewport()->height();
    if (missing > 0 && !event->spontaneous() && !window()->testAttribute(Qt::WA_Resized))
        resizeWithinScreen(*window(), window()->size() + QSize(0, missing));
}

bool FormScroll::eventFilter(QObject* watched, QEvent* event)
{
    const bool isFiltered = QScrollArea::eventFilter(watched, event);
    if (watched == widget() && event->type() == QEvent::LayoutRequest) {
        updateGeometry();
        for (const QWidget* part = this; !part->isWindow(); part = part->parentWidget()) {
            if (QLayout* around = part->parentWidget()->layout())
                around->activate(); // now, so that no bar flickers
        }
        fitContent();
    }
    return isFiltered;
}

void scrollAbove(QVBoxLayout& column, int foot)
{
    auto* content = new QWidget;
    // In the window from the start, so that the moved controls keep their places in the order of the Tab key.
    auto* area = new FormScroll(content, column.parentWidget());
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins({});
    rows->setSpacing(column.spacing());
    for (int index = 0; index < foot; ++index) {
        const int stretch = column.stretch(0);
        QLayoutItem* item = column.takeAt(0);
        if (item->layout()) {
            item->layout()->setParent(nullptr);
            rows->addLayout(item->layout(), stretch);
        } else if (QWidget* widget = item->widget()) {
            rows->addWidget(widget, stretch, item->alignment());
            delete item;
        } else {
            rows->addItem(item);
            rows->setStretch(index, stretch);
        }
    }
    column.insertWidget(0, area, 1);
}

} // namespace kalmo::ui
