#pragma once

class QLineEdit;

namespace kalmo::ui {

/// Makes a field look and behave like a search: a magnifier at its head, and a button that empties it.
void makeSearchField(QLineEdit& field);

} // namespace kalmo::ui
