// The main window's handling of the list in front: searching, marking, copying, and saving its layout.

#include "transfer/export/VcfTarget.h"
#include "ui/forms/FormerStatesDialog.h"
#include "ui/lists/ListLayout.h"
#include "ui/panels/fraFFS.h"
#include "ui/panels/fraSounds.h"
#include "ui/panels/ListPanel.h"
#include "ui/window/frmPB.h"
#include "ui/window/mdlFormResize.h"
#include "ui/window/NaviTree.h"
#include "ui/window/PanelStack.h"
#include "ui/window/StatusArea.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

/// Ahead of a tool tip, for commands that mean another section than the one in front.
QString sectionOf(int mode)
{
    switch (mode) {
    case ModePhonebook:
        return u"Telefonbuch: "_s;
    case ModeProviders:
        return u"Provider: "_s;
    case ModeSounds:
        return u"Klingeltöne: "_s;
    case ModeDiverse:
        return u"Diverses: "_s;
    default:
        return {};
    }
}

} // namespace

QList<ListPanel*> frmPB::listPanels() const
{
    QList<ListPanel*> panels;
    for (ListPanel* panel : {m_fraVCF, m_fraPBTB, m_fraPBNE}) {
        if (panel)
            panels.append(panel);
    }
    return panels;
}

RowsView* frmPB::listInFront() const
{
    return m_panels->currentWidget()->findChild<RowsView*>();
}

void frmPB::makeEditMenu()
{
    struct Row
    {
        const char* name;
        QStringView text;
        QKeySequence key;
        void (*run)(RowsView& view);
    };
    static const Row rows[] = {
        {"editSelectAll", u"Alles &markieren", QKeySequence::SelectAll,
         [](RowsView& view) { view.selectAll(); }},
        {"editCopy", u"&Kopieren", QKeySequence::Copy, [](RowsView& view) { view.copySelected(); }},
        {"editSearch", u"Suc&hen", QKeySequence::Find, [](RowsView& view) { view.wantSearch(); }},
    };
    auto* menu = menuBar()->addMenu(u"&Bearbeiten"_s);
    for (const Row& row : rows) {
        QAction* action = menu->addAction(row.text.toString(), this, [this, run = row.run] {
            if (RowsView* view = listInFront(); view && view->isEnabled())
                run(*view);
        });
        action->setObjectName(QLatin1StringView(row.name));
        action->setShortcut(row.key);
        m_editActions.append(action);
    }
    connect(m_panels, &QStackedWidget::currentChanged, this, &frmPB::offerEditing);
    offerEditing();
}

void frmPB::offerEditing()
{
    for (QAction* action : std::as_const(m_editActions))
        action->setEnabled(m_panels->currentWidget() && listInFront());
}

/// All that the toolbar offers for a list, and the commands of the menu "Bearbeiten".
void frmPB::makeContextMenu(RowsView& view)
{
    const auto addGap = [&] {
        auto* gap = new QAction(&view);
        gap->setSeparator(true);
        view.addAction(gap);
    };
    view.setContextMenuPolicy(Qt::ActionsContextMenu);
    for (const CommandRow& row : commandTable()) {
        if (row.command != Command::Help)
            view.addAction(m_actions[row.command]);
    }
    addGap();
    view.addActions(m_editActions);
    addGap();
    view.addAction(m_formerStates);
    const ListPanel* contacts = m_fraVCF ? m_fraVCF : m_fraPBTB;
    if (&view == &contacts->view())
        view.setRowFormat({.mediaType = u"text/vcard"_s, .bytesOf = transfer::vcfCardOf});
}

void frmPB::makeContextMenu(fraFFS& panel)
{
    const QList<QAction*> groups[] = {m_editActions, {m_formerStates}};
    for (const QList<QAction*>& group : groups) {
        auto* gap = new QAction(&panel);
        gap->setSeparator(true);
        panel.view().addAction(gap);
        panel.view().addActions(group);
    }
}

/// While the files are in front the toolbar's commands still mean the section before them. Their keys and
/// their places in the menu belong to the files' own commands then, and the tool tips name the section.
void frmPB::giveCommands()
{
    const bool isFiles = isFilesInFront();
    const QString section = sectionOf(m_toolbarMode);
    QList<QAction*> commands;
    for (const CommandRow& row : commandTable()) {
        QAction* action = m_actions[row.command];
        const bool isOwn = !isFiles || row.command == Command::Help;
        const QKeySequence shortcut(isOwn ? row.shortcut.toString() : QString());
        action->setShortcut(shortcut);
        const QString key = (isOwn && row.command == Command::Delete ? QKeySequence::Delete : shortcut)
                                .toString(QKeySequence::NativeText);
        const QString toolTip = (isOwn ? QString() : section) + row.toolTip.toString();
        action->setToolTip(key.isEmpty() ? toolTip : u"%1 (%2)"_s.arg(toolTip, key));
        if (row.command != Command::Help)
            commands.append(action);
    }
    const QList<QAction*> entries = m_mnuList->actions();
    for (QAction* action : entries.first(entries.indexOf(m_endOfCommands)))
        m_mnuList->removeAction(action);
    m_mnuList->insertActions(m_endOfCommands, isFiles ? m_fraFFS->commands() : commands);
}

/// The list whose states are shown first.
operations::RecordedList frmPB::recordedListInFront() const
{
    if (isFilesInFront())
        return operations::RecordedList::Files;
    switch (m_toolbarMode) {
    case ModeProviders:
        return operations::RecordedList::Providers;
    case ModeSounds:
        return operations::RecordedList::Ringtones;
    default:
        return operations::RecordedList::Phonebook;
    }
}

void frmPB::showFormerStates()
{
    const bool interruptsFiles = isFilesInFront();
    const operations::RecordedList list = recordedListInFront();
    if (m_sta->isBusy() || !regainLine())
        return;
    {
        const toolkit::BusyScope busy(&m_parts.busy);
        operations::identifyPhone(m_program.line);
    }
    operations::UndoJob job{m_program.line, m_program.memory, m_mmc};
    if (m_contacts && m_contacts->isRead())
        job.contacts = m_contacts->store()->lastReading();
    FormerStatesDialog dialog(m_program, job, list, this);
    dialog.exec();
    readAgain(dialog.changedLists());
    if (interruptsFiles && !m_closeWanted)
        returnToFiles();
}

/// Reads the lists that came back into the phone, so that no older list is written over them.
void frmPB::readAgain(const QSet<operations::RecordedList>& changed)
{
    using operations::RecordedList;
    if (m_contacts && changed.contains(RecordedList::Phonebook))
        m_contacts->readAgain();
    if (m_phonebook && changed.contains(RecordedList::Phonebook))
        m_phonebook->run(Command::Read);
    if (m_providers && changed.contains(RecordedList::Providers))
        m_providers->run(Command::Read);
    if (m_fraSounds && changed.contains(RecordedList::Ringtones))
        m_fraSounds->load();
}

QList<RowsView*> frmPB::rememberedLists() const
{
    QList<RowsView*> views;
    for (const ListPanel* panel : listPanels())
        views.append(&panel->view());
    if (m_fraFFS)
        views.append(&m_fraFFS->view());
    if (m_fraSounds)
        views.append(&m_fraSounds->view());
    return views;
}

void frmPB::restoreLayouts()
{
    for (RowsView* view : rememberedLists())
        restoreListLayout(*view, m_program.context.settings);
    restoreSplitter(*m_splitter, m_program.context.settings);
}

void frmPB::saveLayouts()
{
    for (const RowsView* view : rememberedLists())
        saveListLayout(*view, m_program.context.settings);
    saveSplitter(*m_splitter, m_program.context.settings);
    SaveFormLayout(*this, m_program.context.settings);
}

/// Keeps the number of rows in the panel's caption: "Telefonbuch - 12 Einträge".
void frmPB::countRows(ListPanel& panel, const QString& name)
{
    const toolkit::ListRows* rows = panel.view().rows();
    const auto show = [&panel, name, rows] {
        const int count = rows->count();
        panel.setCaption(count == 0   ? name
                         : count == 1 ? u"%1 - 1 Eintrag"_s.arg(name)
                                      : u"%1 - %2 Einträge"_s.arg(name, QString::number(count)));
    };
    connect(rows, &toolkit::ListRows::inserted, &panel, show);
    connect(rows, &toolkit::ListRows::removed, &panel, show);
    connect(rows, &toolkit::ListRows::reset, &panel, show);
}

} // namespace kalmo::ui
