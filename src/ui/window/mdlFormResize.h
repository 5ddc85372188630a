#pragma once

#include "app/mdlRegIni.h"

class QWidget;

namespace kalmo::ui {

inline constexpr int twipsPerPixel = 15;

/// Place and size of a window across runs, under its object name in the settings, in twips.

/// Writes nothing for a minimised window. A maximised one keeps the place and size that it had before.
void SaveFormLayout(const QWidget& form, app::Settings& settings);

enum class Restore { PlaceAndSize, SizeAlone };

/// Restores the saved place and size of the window. A value that is missing or invalid, such as a place on a
/// screen that is gone, changes nothing. A maximised window comes back maximised.
void RestoreFormLayout(QWidget& form, const app::Settings& settings, Restore parts = Restore::PlaceAndSize);

} // namespace kalmo::ui
