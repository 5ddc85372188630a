#include "ui/adaptors/ScrolledBox.h"

#include "ui/controls/FormScroll.h"
#include "ui/controls/ScreenRoom.h"

#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

namespace kalmo::ui {

namespace {
constexpr int widthInCharacters = 90;
}

/// The base class would give the box the height of its whole text at each change of the layout.
bool ScrolledBox::event(QEvent* event)
{
    const bool isForBase = !m_isScrolled || event->type() != QEvent::LayoutRequest;
    return isForBase ? QMessageBox::event(event) : QDialog::event(event);
}

void ScrolledBox::showEvent(QShowEvent* event)
{
    QMessageBox::showEvent(event);
    if (!m_isScrolled && height() > roomOnScreen(*this).height())
        scrollText();
}

void ScrolledBox::scrollText()
{
    auto* text = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (!text)
        return;
    m_isScrolled = true;
    text->setWordWrap(true);
    auto* content = new QWidget;
    auto* area = new FormScroll(content, this);
    delete layout()->replaceWidget(text, area);
    auto* rows = new QVBoxLayout(content);
    rows->setContentsMargins({});
    rows->addWidget(text);
    text->show();
    area->show();
    const int width = fontMetrics().averageCharWidth() * widthInCharacters;
    const QSize wanted(width, layout()->totalHeightForWidth(width));
    setFixedSize(wanted.boundedTo(roomOnScreen(*this)));
    move(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size(), screen()->availableGeometry())
             .topLeft());
}

} // namespace kalmo::ui
