#pragma once

#include <QtWidgets>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

/// Class and name of a widget, for a fault.
inline QString described(const QWidget& widget)
{
    return u"%1 %2"_s.arg(QString::fromLatin1(widget.metaObject()->className()), widget.objectName());
}

/// The text of a label, button or group, empty for other widgets.
inline QString textOf(const QWidget& widget)
{
    if (const auto* box = qobject_cast<const QGroupBox*>(&widget))
        return box->title();
    const bool showsText =
        qobject_cast<const QLabel*>(&widget) || qobject_cast<const QAbstractButton*>(&widget);
    return showsText ? widget.property("text").toString() : QString();
}

/// The widgets of a form that are shown in it, without those of its other windows.
inline QList<QWidget*> shownWidgets(const QWidget& form)
{
    QList<QWidget*> shown;
    for (QWidget* widget : form.findChildren<QWidget*>()) {
        if (widget->isVisibleTo(&form) && widget->window() == &form)
            shown.append(widget);
    }
    return shown;
}

} // namespace kalmo::tests
