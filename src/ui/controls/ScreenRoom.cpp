#include "ui/controls/ScreenRoom.h"

#include <QScreen>
#include <QWidget>

namespace kalmo::ui {

namespace {

constexpr int sideFrames = 8; // pixels
constexpr int titleLines = 2; // of text; the system knows the frame only of a window that is shown

} // namespace

QSize roomOnScreen(const QWidget& window)
{
    return window.screen()->availableSize() - QSize(sideFrames, window.fontMetrics().height() * titleLines);
}

void resizeWithinScreen(QWidget& window, QSize wanted)
{
    window.resize(wanted.boundedTo(roomOnScreen(window)));
}

} // namespace kalmo::ui
