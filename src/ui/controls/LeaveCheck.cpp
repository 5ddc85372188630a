#include "ui/controls/LeaveCheck.h"

#include <QApplication>
#include <QFocusEvent>

namespace kalmo::ui {

namespace {

bool isLeaving(const QEvent& event)
{
    if (event.type() != QEvent::FocusOut)
        return false;
    switch (static_cast<const QFocusEvent&>(event).reason()) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::MouseFocusReason:
    case Qt::ShortcutFocusReason:
        return true;
    default:
        return false;
    }
}

} // namespace

LeaveCheck::LeaveCheck(QWidget& field, const QWidget* exit, std::function<bool()> rejects)
    : QObject(&field), m_field(field), m_exit(exit), m_rejects(std::move(rejects))
{
    field.installEventFilter(this);
}

bool LeaveCheck::eventFilter(QObject*, QEvent* event)
{
    if (isLeaving(*event))
        QMetaObject::invokeMethod(this, &LeaveCheck::check, Qt::QueuedConnection);
    return false;
}

void LeaveCheck::check()
{
    const bool givesUp = m_exit && QApplication::focusWidget() == m_exit;
    if (givesUp || !m_field.isVisible() || !m_field.isEnabled() || m_field.hasFocus())
        return;
    if (m_rejects())
        m_field.setFocus();
}

} // namespace kalmo::ui
