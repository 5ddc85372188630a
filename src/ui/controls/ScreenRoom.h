#pragma once

#include <QSize>

class QWidget;

namespace kalmo::ui {

/// The largest size of a window that is whole on its screen, with a frame around it.
QSize roomOnScreen(const QWidget& window);

/// Resizes a window to what is wanted, or to what its screen has room for.
void resizeWithinScreen(QWidget& window, QSize wanted);

} // namespace kalmo::ui
