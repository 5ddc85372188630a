#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace kalmo::ui {

/// An icon of the program by its name ("read", "folder", "signal3" ...), or by the icon key of a row. Lines
/// have the palette's text colour, light or dark, and are drawn for the size and the screen that they are
/// shown at. An unknown name gives an empty icon.
QIcon icon(const QString& name);

/// The same as a picture of so many logical pixels, for the present scale and palette of the screen.
QPixmap pixmap(const QString& name, int size, qreal devicePixelRatio);

/// The program's own icon.
QIcon programIcon();

} // namespace kalmo::ui
