#include "ui/panels/SponsorPicture.h"

#include <QPainter>
#include <QStyleOptionFocusRect>

// Outside of any namespace, as the macro needs it. Without it the linker leaves the drawings out.
static void loadSponsors()
{
    Q_INIT_RESOURCE(sponsors);
}

namespace kalmo::ui {

using namespace Qt::StringLiterals;

SponsorPicture::SponsorPicture(const QString& file, QWidget* parent) : QAbstractButton(parent)
{
    loadSponsors();
    m_drawing.load(u":/sponsors/"_s + file);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SponsorPicture::sizeHint() const
{
    return m_drawing.defaultSize();
}

void SponsorPicture::paintEvent(QPaintEvent*)
{
    // At most twice as large as it was drawn for, even in a large window.
    const QSize size = m_drawing.defaultSize().scaled(this->size().boundedTo(m_drawing.defaultSize() * 2),
                                                      Qt::KeepAspectRatio);
    const QRect place(QPoint(0, 0), size);
    QPainter painter(this);
    m_drawing.render(&painter, place);
    if (!hasFocus())
        return;
    QStyleOptionFocusRect focus;
    focus.initFrom(this);
    focus.rect = place;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
}

} // namespace kalmo::ui
