#pragma once

class QWidget;

namespace kalmo::ui {

/// Shows name, version and purpose of the program, until the user closes it.
void showAbout(QWidget& parent);

} // namespace kalmo::ui
