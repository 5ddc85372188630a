#pragma once

#include "app/mdlRegIni.h"

class QSplitter;

namespace kalmo::ui {

class RowsView;

/// What the user made of a list on screen: widths of its columns, order of its rows. Kept across runs in the
/// section "frmPB" of the settings, under the list's name.
void saveListLayout(const RowsView& view, app::Settings& settings);
/// Gives the list back what was saved. Values that make no sense leave it as it is.
void restoreListLayout(RowsView& view, const app::Settings& settings);

/// The same for the place of a splitter's handles, under its object name.
void saveSplitter(const QSplitter& splitter, app::Settings& settings);
void restoreSplitter(QSplitter& splitter, const app::Settings& settings);

} // namespace kalmo::ui
