#include "ui/controls/ReadableColour.h"

#include <algorithm>
#include <cmath>

namespace kalmo::ui {

namespace {

constexpr int steps = 20; // from the wanted colour to black or white

double luminance(const QColor& colour)
{
    const auto part = [](double share) {
        return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
}

QColor mixed(const QColor& from, const QColor& to, double share)
{
    const auto part = [share](double start, double end) {
        return static_cast<float>(start + (end - start) * share);
    };
    return QColor::fromRgbF(part(from.redF(), to.redF()), part(from.greenF(), to.greenF()),
                            part(from.blueF(), to.blueF()));
}

} // namespace

double contrastOf(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readableOn(const QColor& wanted, const QColor& ground, double least)
{
    const QColor end = contrastOf(Qt::white, ground) > contrastOf(Qt::black, ground) ? Qt::white : Qt::black;
    QColor colour = wanted;
    for (int step = 1; step <= steps && contrastOf(colour, ground) < least; ++step)
        colour = mixed(wanted, end, static_cast<double>(step) / steps);
    return colour;
}

} // namespace kalmo::ui
