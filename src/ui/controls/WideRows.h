#pragma once

#include <QStringList>

class QBoxLayout;
class QComboBox;
class QGridLayout;

namespace kalmo::ui {

/// Rows of a form that large letters can make wider than the screen.

/// Gives the parts of a row lines of their own if the screen has no room for them side by side. The row is
/// the layout of a widget.
void stackIfTooWide(QBoxLayout& row);

/// Places boxes side by side, each below its title, in as many rows as the width of the screen asks for.
void placeBelowTitles(QGridLayout& grid, const QList<QComboBox*>& boxes, const QStringList& titles);

} // namespace kalmo::ui
