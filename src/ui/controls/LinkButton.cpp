#include "ui/controls/LinkButton.h"

#include "ui/controls/ReadableColour.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

namespace kalmo::ui {

namespace {
constexpr int margin = 2;
}

LinkButton::LinkButton(const QString& text, QWidget* parent) : QPushButton(text, parent)
{
    setFlat(true);
    setAutoDefault(false);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LinkButton::sizeHint() const
{
    const QSize words = fontMetrics().size(Qt::TextShowMnemonic, text());
    return words.grownBy({margin, margin, margin, margin});
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QFont font = painter.font();
    font.setUnderline(underMouse() && isEnabled());
    painter.setFont(font);
    // Some desktops have dark windows and leave the links as dark as on white.
    painter.setPen(isEnabled()
                       ? readableOn(palette().color(QPalette::Link), palette().color(QPalette::Window))
                       : palette().color(QPalette::Disabled, QPalette::Link));
    painter.drawText(rect().adjusted(margin, 0, 0, 0),
                     static_cast<int>(Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic), text());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

} // namespace kalmo::ui
