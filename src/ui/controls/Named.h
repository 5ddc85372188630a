#pragma once

#include <QWidget>

namespace kalmo::ui {

/// Gives a widget the name that tests and accessibility tools find it by, and what a screen reader says.
template <typename Widget>
Widget* named(Widget* widget, const QString& name, const QString& spoken = {})
{
    widget->setObjectName(name);
    if (!spoken.isEmpty())
        widget->setAccessibleName(spoken);
    return widget;
}

} // namespace kalmo::ui
