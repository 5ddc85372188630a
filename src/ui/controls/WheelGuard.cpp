#include "ui/controls/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QSlider>

namespace kalmo::ui {

namespace {

bool changesByWheel(const QWidget& widget)
{
    return qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QSlider*>(&widget);
}

} // namespace

WheelGuard::WheelGuard(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool WheelGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::Wheel && event->type() != QEvent::Polish)
        return false;
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || !changesByWheel(*widget))
        return false;
    if (event->type() == QEvent::Polish) {
        if (widget->focusPolicy() == Qt::WheelFocus)
            widget->setFocusPolicy(Qt::StrongFocus);
        return false;
    }
    if (widget->hasFocus())
        return false;
    event->ignore(); // so that it goes on to the page
    return true;
}

} // namespace kalmo::ui
