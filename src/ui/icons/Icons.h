#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace kalmo::ui {

/// An icon of the program by its name ("read", "folder", "signal3" ...), or by an icon key that the engine
/// gives to a row. Lines take the palette's text colour, light or dark, and are drawn for the size and the
/// screen that they are shown at. An unknown name gives an empty icon.
QIcon icon(const QString& name);

/// The same as a picture of so many logical pixels, for the screen's scale and the palette of now.
QPixmap pixmap(const QString& name, int size, qreal devicePixelRatio);

/// The program's own icon.
QIcon programIcon();

} // namespace kalmo::ui
