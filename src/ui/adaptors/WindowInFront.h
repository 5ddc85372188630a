#pragma once

class QWidget;

namespace kalmo::ui {

/// Returns the window that the user works with. While another program has the focus that is the modal dialog,
/// or else a visible window that belongs to no other. nullptr without any.
QWidget* windowInFront();

} // namespace kalmo::ui
