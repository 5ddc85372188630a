// The main window's navigation: entering and leaving sections.

#include "obex/clsMmcOperation.h"
#include "obex/DataChannel.h"
#include "operations/PhoneIdentity.h"
#include "ui/help/HelpWindow.h"
#include "ui/panels/fraAd.h"
#include "ui/panels/fraDIV.h"
#include "ui/panels/fraFFS.h"
#include "ui/panels/fraSounds.h"
#include "ui/panels/ListPanel.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/frmPB.h"
#include "ui/window/NaviTree.h"
#include "ui/window/PanelStack.h"
#include "ui/window/Reminders.h"
#include "ui/window/StatusArea.h"

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using toolkit::Answer;

void frmPB::goTo(const QString& key)
{
    if (!m_sta->isBusy() && m_tvwNavi->selectNode(key))
        tvwNavi_NodeClick(key);
}

void frmPB::tvwNavi_NodeClick(const QString& key)
{
    const bool areFilesOpen = isFilesInFront() && m_mmc->IsOnline() == obex::clsMmc::Connected;
    if (m_sta->isBusy() || (areFilesOpen && key == nodes::Files))
        return;
    const bool leaves = m_guard.ActiveSection == SectionFiles || isInDataMode();
    const bool isStuck = leaves && !leaveFiles();
    m_panels->hidePanel(m_fraFFS);
    if (!passesGuard(key))
        return;
    m_isStuck = isStuck;
    enterSection(key);
    m_isStuck = false;
    selectShownNode();
}

void frmPB::enterSection(const QString& key)
{
    struct Entrance
    {
        QStringView node;
        void (frmPB::*enter)(const QString& key);
    };
    static constexpr Entrance entrances[] = {
        {nodes::Phonebook, &frmPB::enterPhonebook},  {nodes::Providers, &frmPB::enterProviders},
        {nodes::Diverse, &frmPB::enterDiverse},      {nodes::Sounds, &frmPB::enterSounds},
        {nodes::Sponsors, &frmPB::enterSponsor},     {nodes::SponsorOrvane, &frmPB::enterSponsor},
        {nodes::SponsorNorva, &frmPB::enterSponsor}, {nodes::Files, &frmPB::enterFiles},
        {nodes::Settings, &frmPB::enterSettings},    {nodes::Bluetooth, &frmPB::showBluetoothHelp},
        {nodes::AreaCodes, &frmPB::enterAreaCodes},
    };
    const auto found = std::ranges::find(entrances, QStringView(key), &Entrance::node);
    if (found != std::end(entrances))
        (this->*found->enter)(key);
}

void frmPB::showPanel(QWidget* panel, const QString& node)
{
    m_nodes[panel] = node;
    if (m_panels->currentWidget() != panel) // the sentence in the status bar is about the other section
        m_sta->showReady();
    m_panels->showPanel(panel);
}

/// Several nodes show no panel, and leaving the files shows the panel before them.
void frmPB::selectShownNode()
{
    m_tvwNavi->selectNode(m_nodes.value(m_panels->currentWidget()));
}

bool frmPB::isFilesInFront() const
{
    return m_fraFFS && m_panels->currentWidget() == m_fraFFS;
}

bool frmPB::isInDataMode() const
{
    return m_program.line.mode() == link::LineMode::Data;
}

/// "Neu laden" opens a channel that was lost, and a port that is gone has none. A phone that keeps silent may
/// still be in its data mode.
void frmPB::remindOfChannel()
{
    const bool isShown = m_reminders->isShown(Reminders::CloseFfs);
    const bool isPortOpen = m_program.line.port().IsOpen();
    if (!isPortOpen && isShown) {
        m_reminders->hideKind(Reminders::CloseFfs);
        m_reminders->showKind(Reminders::NoMenu);
    } else if (isPortOpen && isFilesInFront() && isInDataMode() && !isShown) {
        m_reminders->showKind(Reminders::CloseFfs);
        m_reminders->hideKind(Reminders::NoMenu);
    }
}

/// The phone has to take AT commands before anything else is asked of it.
bool frmPB::leaveFiles()
{
    const bool isClosed = closeChannel();
    m_reminders->showKind(Reminders::NoMenu);
    return isClosed;
}

/// Returns true if the phone takes AT commands, after it was taken back to them if necessary. Informs the
/// user if not.
bool frmPB::regainLine()
{
    link::Line& line = m_program.line;
    if (m_isStuck)
        return false;
    if (isInDataMode())
        return leaveFiles();
    if (line.mode() == link::LineMode::Text || !line.port().IsOpen())
        return true;
    m_sta->offerCancel(true);
    const toolkit::BusyScope busy(&m_parts.busy);
    const bool isBack = obex::recoverLine(line, m_parts.progress);
    if (!isBack) {
        const bool isStopped = m_parts.progress.cancelled() || m_mmc->stopAsked();
        m_mmc->ErrMsg(isStopped               ? obex::Cancelled
                      : !line.port().IsOpen() ? obex::Timeout
                                              : obex::ChannelStuck);
    }
    m_sta->offerCancel(false);
    return isBack;
}

/// Asks before unsaved changes are left. If the user refuses, goes back to the former section and returns
/// false.
bool frmPB::passesGuard(const QString& key)
{
    const auto store = m_guard.promptFor(key);
    if (!store)
        return true;
    const Answer answer = m_program.context.dialogs.Show({.text = unsavedChangesText(*store),
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

void frmPB::enterPhonebook(const QString& key)
{
    m_reminders->setShown(Reminders::Save, m_program.memory.TbDirty);
    showPanel(m_contacts ? m_fraVCF : m_fraPBTB, key);
    setMode(ModePhonebook, SectionPhonebook);
    readShownList();
    (m_contacts ? m_fraVCF : m_fraPBTB)->view().setFocus();
}

void frmPB::enterProviders(const QString& key)
{
    m_reminders->setShown(Reminders::Save, m_program.memory.NeDirty);
    showPanel(m_fraPBNE, key);
    setMode(ModeProviders, SectionProviders);
    readShownList();
    m_fraPBNE->view().setFocus();
}

/// Reads the list in front if that was not done yet.
void frmPB::readShownList()
{
    const QWidget* shown = m_panels->currentWidget();
    if (m_contacts && shown == m_fraVCF && !m_contacts->isRead())
        press(Command::Refresh);
    else if (m_phonebook && shown == m_fraPBTB && !m_phonebook->isRead())
        press(Command::Read);
    else if (m_providers && shown == m_fraPBNE && !m_providers->isRead())
        press(Command::Read);
}

void frmPB::enterDiverse(const QString& key)
{
    enterPanel(key, m_fraDIV, ModeDiverse, SectionDiverse);
}

void frmPB::enterSounds(const QString& key)
{
    enterPanel(key, m_fraSounds, ModeSounds, m_guard.ActiveSection);
    m_fraSounds->view().enter();
}

void frmPB::enterPanel(const QString& key, QWidget* panel, int mode, int section)
{
    m_reminders->hideKind(Reminders::Save);
    showPanel(panel, key);
    setMode(mode, section);
    if (mode == ModeDiverse)
        press(Command::Refresh);
}

void frmPB::enterSponsor(const QString& key)
{
    m_reminders->hideKind(Reminders::Save);
    m_fraAd->showNode(key);
    showPanel(m_fraAd, key);
    setMode(ModeSponsor, SectionSponsor);
}

void frmPB::enterFiles(const QString& key)
{
    showPanel(m_fraFFS, key);
    m_guard.ActiveSection = SectionFiles;
    if (!m_isStuck)
        openFiles(&fraFFS::FfsListRefresh);
    m_fraFFS->view().enter();
}

/// Opens the data channel and lists a folder, as one operation that the user may stop.
void frmPB::openFiles(void (fraFFS::*list)())
{
    const obex::clsMmc::Busy busy(*m_mmc);
    if (m_program.line.mode() == link::LineMode::Text) // for the records of what is changed in the section
        operations::identifyPhone(m_program.line);
    if (!m_mmc->Online(m_parts.progress))
        return;
    m_reminders->showKind(Reminders::CloseFfs);
    m_reminders->hideKind(Reminders::NoMenu);
    FFSMemAct();
    if (!m_mmc->stopAsked())
        (m_fraFFS->*list)();
}

/// Opens the files again after a command of another section. The sentence about that command stays.
void frmPB::returnToFiles()
{
    const QString sentence = m_sta->text();
    openFiles(&fraFFS::comeBack);
    m_sta->setText(sentence);
    m_fraFFS->view().enter();
}

void frmPB::enterSettings(const QString&)
{
    if (m_closeWanted) // the end of an operation closes the window now
        return;
    saveLayouts();
    hide();
    Q_EMIT settingsRequested();
}

void frmPB::showBluetoothHelp(const QString&)
{
    openHelp(helpTopicBluetooth);
}

void frmPB::enterAreaCodes(const QString&)
{
    if (m_contacts && regainLine())
        m_contacts->editAreaCodes();
}

/// The same phone, looked for again at the same port.
void frmPB::wantSearch()
{
    if (m_sta->isBusy() || m_closeWanted)
        return;
    saveLayouts();
    closeChannel();
    hide();
    Q_EMIT searchRequested();
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
    // Outside of the event: reading takes seconds, and the window has to be seen meanwhile.
    if (!std::exchange(m_wasShown, true))
        QMetaObject::invokeMethod(this, &frmPB::firstShown, Qt::QueuedConnection);
    // Files from outside open after that: a list needs the melodies' names.
    QMetaObject::invokeMethod(this, &frmPB::openNextGiven, Qt::QueuedConnection);
    Q_EMIT shown();
}

/// A window that the user has left by then, for the settings, reads when it is shown again: from there a
/// search may begin at any time.
void frmPB::firstShown()
{
    m_wasShown = isVisible();
    if (m_sta->isBusy() || !isVisible())
        return;
    if (m_fraSounds)
        m_fraSounds->load();
    readShownList();
    if (m_panels->currentWidget() == m_fraDIV)
        press(Command::Refresh);
    if (isFilesInFront()) // after a new search: opens the data channel again
        enterFiles(m_nodes.value(m_fraFFS));
    tellKept();
}

void frmPB::showEmulated(bool isEmulated)
{
    m_sta->showEmulated(isEmulated);
}

void frmPB::forgetPhone()
{
    m_program.memory.forget();
    if (m_contacts)
        m_contacts->forget();
    for (ClassicList* list : {m_phonebook, m_providers}) {
        if (list)
            list->forget();
    }
    if (m_fraFFS)
        m_fraFFS->forget();
    m_sta->showReady();
    m_wasShown = false;
}

void frmPB::forgetDevice()
{
    m_fraDIV->forget();
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

} // namespace kalmo::ui
