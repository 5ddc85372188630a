#pragma once

#include "app/mdlRegIni.h"

class QSplitter;
class QTreeView;

namespace kalmo::ui {

class RowsView;

/// The user's layout of a list on screen: widths and order of its columns, order of its rows. Kept across
/// runs in the section "frmPB" of the settings, under the list's name.
void saveListLayout(const RowsView& view, app::Settings& settings);
/// Restores the saved layout. Invalid values change nothing.
void restoreListLayout(RowsView& view, const app::Settings& settings);

/// Does the same for the widths and the order of the columns alone, in the section of a form.
void saveColumns(const QTreeView& view, app::Settings& settings, const QString& section);
void restoreColumns(QTreeView& view, const app::Settings& settings, const QString& section);

/// Does the same for the handles of a splitter, under its object name.
void saveSplitter(const QSplitter& splitter, app::Settings& settings);
void restoreSplitter(QSplitter& splitter, const app::Settings& settings);

} // namespace kalmo::ui
