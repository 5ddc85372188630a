#include "ui/adaptors/WindowInFront.h"

#include <QApplication>

#include <algorithm>

namespace kalmo::ui {

QWidget* windowInFront()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto visible = std::ranges::find_if(windows, [](const QWidget* window) {
        return window->isVisible() && !window->parentWidget() && // the help belongs to the main window
               (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog);
    });
    return visible == windows.end() ? nullptr : *visible;
}

} // namespace kalmo::ui
