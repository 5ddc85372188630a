// The main window's commands: what each needs before it runs, and the way back to the files after it.

#include "ui/help/HelpWindow.h"
#include "ui/panels/fraFFS.h"
#include "ui/window/frmPB.h"
#include "ui/window/StatusArea.h"

#include <QMenu>
#include <QToolBar>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// Returns true if a command may talk to the phone in AT commands, or opens a data session of its own.
bool needsLine(Command command)
{
    switch (command) {
    case Command::Read:
    case Command::Write:
    case Command::New:
    case Command::Edit:
    case Command::Delete:
    case Command::Refresh:
        return true;
    default:
        return false;
    }
}

} // namespace

void frmPB::press(Command command)
{
    if (command == Command::Help) {
        openHelp();
        return;
    }
    // A key of a list may send a command that its section does not offer now.
    if (m_sta->isBusy() || !m_actions[command]->isEnabled())
        return;
    CommandTarget* target = m_targets.value(m_toolbarMode);
    if (!target)
        return;
    if (const QString text = target->obstacleTo(command); !text.isEmpty()) {
        m_sta->showResult(text);
        return;
    }
    const bool interruptsFiles = isFilesInFront() && needsLine(command);
    if (interruptsFiles && isInDataMode())
        m_sta->hold(u"Das Dateisystem wird kurz geschlossen ..."_s);
    if (needsLine(command) && !regainLine())
        return;
    // Of the commands without OBEX only reading can be stopped: a store half written is half lost.
    m_sta->offerCancel(command == Command::Read);
    target->run(command);
    m_sta->offerCancel(false);
    if (interruptsFiles && !m_closeWanted)
        returnToFiles();
}

void frmPB::popUp(Command command)
{
    QMenu* import = m_toolbarMode == ModeProviders ? m_mnuImportNE : m_mnuImport;
    QMenu* menu = command == Command::Open ? m_mnuOpen : import;
    const QWidget* button = m_tlb->widgetForAction(m_actions[command]);
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

} // namespace kalmo::ui
