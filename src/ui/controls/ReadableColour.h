#pragma once

#include <QColor>

namespace kalmo::ui {

/// Contrast of two colours, from 1 to 21, as WCAG 2.1 defines it.
double contrastOf(const QColor& one, const QColor& other);

/// The wanted colour, or the nearest lighter or darker one that can be read on the ground: contrast 4.5 or
/// more.
QColor readableOn(const QColor& wanted, const QColor& ground);

} // namespace kalmo::ui
