#pragma once

class QLineEdit;
class QString;

namespace kalmo::ui {

/// Makes a field look and behave like a search: a magnifier at its head, a button that empties it, and a hint
/// that is readable in dark colours too.
void makeSearchField(QLineEdit& field, const QString& hint);

} // namespace kalmo::ui
