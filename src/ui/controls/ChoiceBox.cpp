#include "ui/controls/ChoiceBox.h"

#include <QKeyEvent>
#include <QWheelEvent>

namespace kalmo::ui {

void ChoiceBox::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Escape:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        QComboBox::keyPressEvent(event);
        return;
    default:
        break;
    }
    const bool steps = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_Home || event->key() == Qt::Key_End ||
                       event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown ||
                       event->key() == Qt::Key_Space || event->key() == Qt::Key_F4;
    const bool searches = !event->text().isEmpty() && event->text()[0].isPrint() &&
                          !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (steps || searches)
        showPopup();
    else
        event->ignore();
}

void ChoiceBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace kalmo::ui
