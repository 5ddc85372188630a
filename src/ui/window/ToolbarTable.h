#pragma once

#include <QList>
#include <QString>

#include <functional>

class QMenu;

namespace kalmo::ui {

/// The commands of the toolbar `tlb`.
enum class Command { Read, Write, New, Edit, Delete, Refresh, Open, Save, Export, Import, Help };

struct CommandRow
{
    Command command;
    QStringView key; ///< also the name of its picture
    QStringView caption;
    QStringView toolTip;
    QStringView menuText; ///< with its mnemonic, for the menu bar
    QStringView shortcut; ///< empty for none
};

/// All commands in the toolbar's order.
const QList<CommandRow>& commandTable();

/// Returns true if a section that sets the enabling offers the command; `mode` is the `ToolbarMode` that it
/// sets. Help is always offered.
bool isOffered(Command command, int mode, int phoneType);

/// One line of a popup menu; a separator where the text is empty.
struct MenuRow
{
    QStringView text;
    int choice; ///< number of the choice, -1 to give up
};

struct PopupMenu
{
    QStringView name; ///< "mnuOpen" and so on
    QStringView title;
    QStringView spoken; ///< for screen readers
    QList<MenuRow> rows;
};

/// Adds the rows of the table to a menu. `choose` gets the number of the row that the user takes.
void fillMenu(QMenu& menu, const PopupMenu& table, const std::function<void(int choice)>& choose);

const PopupMenu& mnuOpen();
const PopupMenu& mnuImport_TB();
const PopupMenu& mnuImport_NE();

} // namespace kalmo::ui
