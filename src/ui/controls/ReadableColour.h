#pragma once

#include <QColor>

namespace kalmo::ui {

/// Contrast of two colours, from 1 to 21, as WCAG 2.1 defines it.
double contrastOf(const QColor& one, const QColor& other);

constexpr double readableContrast = 4.5;

/// The wanted colour, or the nearest lighter or darker one that has that contrast with the ground.
QColor readableOn(const QColor& wanted, const QColor& ground, double least = readableContrast);

} // namespace kalmo::ui
