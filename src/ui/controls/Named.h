#pragma once

#include <QWidget>

namespace kalmo::ui {

/// Gives a widget its object name, for tests and accessibility tools, and its spoken name.
template <typename Widget>
Widget* named(Widget* widget, const QString& name, const QString& spoken = {})
{
    widget->setObjectName(name);
    if (!spoken.isEmpty())
        widget->setAccessibleName(spoken);
    return widget;
}

} // namespace kalmo::ui
