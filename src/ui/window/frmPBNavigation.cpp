#include "phonedata/ClassicCommands.h"
#include "ui/help/HelpWindow.h"
#include "ui/panels/fraAd.h"
#include "ui/panels/fraDIV.h"
#include "ui/panels/fraFFS.h"
#include "ui/panels/fraSounds.h"
#include "ui/panels/ListPanel.h"
#include "ui/window/frmPB.h"
#include "ui/window/mdlFormResize.h"
#include "ui/window/NaviTree.h"
#include "ui/window/PanelStack.h"
#include "ui/window/Reminders.h"
#include "ui/window/StatusArea.h"

#include <QMenu>
#include <QPointer>
#include <QToolBar>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using toolkit::Answer;

namespace {
constexpr int bluetoothTopic = 1001;
}

void frmPB::goTo(const QString& key)
{
    if (m_tvwNavi->selectNode(key))
        tvwNavi_NodeClick(key);
}

void frmPB::tvwNavi_NodeClick(const QString& key)
{
    if (m_sta->isBusy() || (m_guard.ActiveSection == SectionFiles && key == u"FFS"_s))
        return;
    const QPointer<frmPB> self(this);
    if (m_guard.ActiveSection == SectionFiles)
        leaveFiles();
    if (!self)
        return;
    m_panels->hidePanel(m_fraFFS);
    if (!passesGuard(key))
        return;
    if (key == u"TB"_s)
        enterPhonebook();
    else if (key == u"NE"_s)
        enterProviders();
    else if (key == u"DIV"_s)
        enterPanel(m_fraDIV, ModeDiverse, SectionDiverse);
    else if (key == u"SOUND"_s)
        enterPanel(m_fraSounds, ModeSounds, m_guard.ActiveSection);
    else if (key.startsWith(u"SPONSOR"_s))
        enterSponsor(key);
    else if (key == u"FFS"_s)
        enterFiles();
    else if (key == u"SETUP"_s)
        enterSettings();
    else if (key == u"BT"_s)
        openHelp(bluetoothTopic);
    else if (key == u"VW"_s && m_contacts)
        m_contacts->editAreaCodes();
}

/// The phone has to take AT commands again before anything else is asked of it.
void frmPB::leaveFiles()
{
    const QPointer<frmPB> self(this);
    const std::shared_ptr<obex::clsMmc> mmc = m_mmc;
    const bool isClosed = mmc->IsOnline() != obex::clsMmc::Connected || mmc->Offline(m_parts.progress);
    if (!self)
        return;
    if (isClosed)
        m_reminders->hideKind(Reminders::CloseFfs);
    m_reminders->showKind(Reminders::NoMenu);
}

/// Asks before unsaved changes are passed over. False leads back to where the user was.
bool frmPB::passesGuard(const QString& key)
{
    const auto store = m_guard.promptFor(key);
    if (!store)
        return true;
    const Answer answer = m_program.context.dialogs.Show({.text = phonedata::unsavedChangesText(*store),
                                                          .buttons = toolkit::Buttons::YesNo,
                                                          .icon = toolkit::Icon::Question,
                                                          .defaultButton = Answer::No});
    if (answer == Answer::Yes)
        return true;
    m_reminders->showKind(Reminders::Save);
    SelectPreviousNode();
    return false;
}

void frmPB::SelectPreviousNode()
{
    m_guard.GuardSuppressed = true;
    goTo(m_guard.previousNode());
    m_guard.GuardSuppressed = false;
}

void frmPB::enterPhonebook()
{
    m_reminders->setShown(Reminders::Save, m_program.memory.TbDirty);
    m_panels->showPanel(m_contacts ? m_fraVCF : m_fraPBTB);
    setMode(ModePhonebook, SectionPhonebook);
    if (m_contacts && !m_contacts->isRead())
        press(Command::Refresh);
    else if (m_phonebook && !m_phonebook->isRead())
        press(Command::Read);
}

void frmPB::enterProviders()
{
    m_reminders->setShown(Reminders::Save, m_program.memory.NeDirty);
    m_panels->showPanel(m_fraPBNE);
    setMode(ModeProviders, SectionProviders);
    if (!m_providers->isRead())
        press(Command::Read);
}

void frmPB::enterPanel(QWidget* panel, int mode, int section)
{
    m_reminders->hideKind(Reminders::Save);
    m_panels->showPanel(panel);
    setMode(mode, section);
    if (mode == ModeDiverse)
        press(Command::Refresh);
}

void frmPB::enterSponsor(const QString& key)
{
    m_reminders->hideKind(Reminders::Save);
    m_fraAd->showNode(key);
    m_panels->showPanel(m_fraAd);
    setMode(ModeSponsor, SectionSponsor);
}

void frmPB::enterFiles()
{
    const QPointer<frmPB> self(this);
    const std::shared_ptr<obex::clsMmc> mmc = m_mmc;
    m_panels->showPanel(m_fraFFS);
    m_guard.ActiveSection = SectionFiles;
    if (!mmc->Online(m_parts.progress) || !self)
        return;
    m_reminders->showKind(Reminders::CloseFfs);
    m_reminders->hideKind(Reminders::NoMenu);
    FFSMemAct();
    if (self && !mmc->stopAsked())
        FfsListRefresh();
}

void frmPB::enterSettings()
{
    SaveFormLayout(*this, m_program.context.settings);
    hide();
    Q_EMIT settingsRequested();
}

void frmPB::setMode(int mode, int section)
{
    m_toolbarMode = mode;
    m_guard.ActiveSection = section;
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action)
        action.value()->setEnabled(isOffered(action.key(), mode, m_program.context.sy.PhoneType));
}

void frmPB::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (std::exchange(m_wasShown, true))
        return;
    // Outside of the event: reading takes seconds, and the window is to be seen meanwhile.
    QMetaObject::invokeMethod(this, &frmPB::firstShown, Qt::QueuedConnection);
}

void frmPB::firstShown()
{
    if (m_fraSounds && !m_sta->isBusy())
        m_fraSounds->load();
}

void frmPB::DisplayRefresh()
{
    m_fraDIV->DisplayRefresh();
}

void frmPB::FFSMemAct()
{
    if (m_fraFFS)
        m_fraFFS->FFSMemAct();
}

void frmPB::FfsListRefresh()
{
    if (m_fraFFS)
        m_fraFFS->FfsListRefresh();
}

void frmPB::press(Command command)
{
    if (command == Command::Help) {
        openHelp();
        return;
    }
    // A key of a list may ask for what its section does not offer now.
    if (m_sta->isBusy() || !m_actions[command]->isEnabled())
        return;
    if (CommandTarget* target = m_targets.value(m_toolbarMode))
        target->run(command);
}

/// The panel of files has a command of its own on that key, and two would cancel each other out.
void frmPB::giveRefreshKey()
{
    const bool isFiles = m_fraFFS && m_panels->currentWidget() == m_fraFFS;
    for (const CommandRow& row : commandTable()) {
        if (row.command == Command::Refresh)
            m_actions[row.command]->setShortcut(isFiles ? QKeySequence()
                                                        : QKeySequence(row.shortcut.toString()));
    }
}

void frmPB::popUp(Command command)
{
    QMenu* import = m_toolbarMode == ModeProviders ? m_mnuImportNE : m_mnuImport;
    QMenu* menu = command == Command::Open ? m_mnuOpen : import;
    const QWidget* button = m_tlb->widgetForAction(m_actions[command]);
    menu->popup(button->mapToGlobal(QPoint(0, button->height())));
}

} // namespace kalmo::ui
