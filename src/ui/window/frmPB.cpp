#include "ui/window/frmPB.h"

#include "app/Version.h"
#include "link/PhoneModels.h"
#include "ui/controls/Named.h"
#include "ui/controls/ScreenRoom.h"
#include "ui/icons/Icons.h"
#include "ui/import/frmImportPb.h"
#include "ui/panels/fraAd.h"
#include "ui/panels/fraDIV.h"
#include "ui/panels/fraFFS.h"
#include "ui/panels/fraSounds.h"
#include "ui/panels/ListPanel.h"
#include "ui/window/AboutBox.h"
#include "ui/window/mdlFormResize.h"
#include "ui/window/NaviTree.h"
#include "ui/window/PanelStack.h"
#include "ui/window/Reminders.h"
#include "ui/window/SecretWords.h"
#include "ui/window/StatusArea.h"

#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QToolBar>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;

namespace {

constexpr QSize smallestSize(11940 / twipsPerPixel, 6810 / twipsPerPixel);
constexpr QSize firstSize(1240, 760);
constexpr int treeWidth = 230;

const QStringList classicNote = {
    u"- Änderungen werden erst mit Ausführen der Funktion \"Schreiben\" ins Telefon übernommen !!!"_s,
    u"- Die Anzahl der speicherbaren Einträge ist nicht abrufbar, d.h. bei zu vielen Einträgen kann es zum "
    u"Schreibfehler am Ende des Vorgangs kommen"_s,
    u"- Der Schreibvorgang wird bei vielen Einträgen immer langsamer (liegt am Gigaset)"_s,
};

const QStringList vcardNote = {
    u"- Das Gigaset wandelt lokale Telefonnummern von sich aus in das internationale Format um. Werden "
    u"falsche Vorwahlen angezeigt, sind die Einstellung im Gigaset falsch - siehe Programmhilfe für "
    u"Einstellanleitung!"_s,
    u"- Änderungen werden bei diesem Telefon sofort übernommen. Der Zugriff ist mitunter recht langsam. Das "
    u"liegt am Gigaset."_s,
};

} // namespace

frmPB::frmPB(Program& program, std::shared_ptr<obex::clsMmc> mmc, QWidget* parent)
    : QMainWindow(parent), m_program(program), m_mmc(std::move(mmc)),
      m_sta(new StatusArea(program.line, this)), m_parts{program, *m_sta, m_sta->progress(), this},
      m_guard(program.memory, program.context.settings), m_tlb(new QToolBar(u"Befehle"_s, this)),
      m_tvwNavi(new NaviTree(program.context.sy.PhoneType, this)), m_panels(new PanelStack(this)),
      m_reminders(new Reminders(this))
{
    setObjectName(u"frmPB"_s);
    setWindowTitle(app::productName() + u" v"_s + app::programVersion() +
                   u" - Gigaset, OpenScape & Mitel Telefon Verwaltungstool"_s);
    makePanels();
    makeToolbar();
    makeMenus();
    makeMenuBar();
    giveCommands();
    layOut();
    connectMmc();
    setMinimumSize(smallestSize);
    resizeWithinScreen(*this, firstSize);
    RestoreFormLayout(*this, program.context.settings);
    for (const ListPanel* panel : listPanels())
        makeContextMenu(panel->view());
    if (m_fraSounds)
        makeContextMenu(m_fraSounds->view());
    if (m_fraFFS)
        makeContextMenu(*m_fraFFS);
    restoreLayouts();
    connect(m_tvwNavi, &NaviTree::nodeClicked, this, &frmPB::tvwNavi_NodeClick);
    connect(m_sta, &StatusArea::searchWanted, this, &frmPB::wantSearch);
    connect(m_sta, &StatusArea::becameIdle, this, &frmPB::closeIfWanted, Qt::QueuedConnection);
    connect(m_sta, &StatusArea::becameIdle, this, &frmPB::remindOfChannel);
    connect(m_sta, &StatusArea::connectionLost, this, &frmPB::remindOfChannel);
    connect(m_panels, &QStackedWidget::currentChanged, this, &frmPB::giveCommands);
    new SecretWords(this, [this] { return m_sta->isBusy(); });
    goTo(nodes::Sponsors.toString());
}

frmPB::~frmPB()
{
    Q_ASSERT(!m_sta->isBusy() && !m_program.line.isWaiting());
}

void frmPB::makePanels()
{
    const int phoneType = m_program.context.sy.PhoneType;
    m_panels->addWidget(m_fraAd = new fraAd(m_program.context.settings, m_program.desktop, this));
    m_panels->addWidget(m_fraDIV = new fraDIV(m_parts, this));
    m_targets[ModeDiverse] = m_fraDIV;
    if (link::hasVcards(phoneType)) {
        m_contacts = new VcardList(m_parts, m_mmc, this);
        m_fraVCF = makeListPanel(u"fraVCF"_s, u"Telefonbuch"_s, m_contacts->rows(), false);
        m_fraVCF->setNote(vcardNote, u"lblStatic2"_s);
        m_fraVCF->view().setColumnCharacters({16, 17, 15, 17, 16, 30, 17, 4});
        connect(m_contacts, &VcardList::captionChanged, m_fraVCF,
                [this] { m_fraVCF->setCaption(m_contacts->caption()); });
        connect(m_contacts, &VcardList::stateChanged, m_fraVCF,
                [this](ListState state) { m_fraVCF->view().setPlaceholder(placeholderFor(state)); });
        connect(m_contacts, &VcardList::menuWanted, this, &frmPB::popUp);
        connect(m_contacts, &VcardList::ended, m_sta, &StatusArea::showResult);
        m_targets[ModePhonebook] = m_contacts;
    } else {
        makeClassicPanels();
    }
    if (link::hasFileSystem(phoneType))
        m_panels->addWidget(m_fraFFS = new fraFFS(m_program, m_mmc, m_parts.progress, this));
    if (link::hasRingtoneSettings(phoneType)) {
        m_panels->addWidget(m_fraSounds = new fraSounds(m_parts, this));
        m_targets[ModeSounds] = m_fraSounds;
    }
}

void frmPB::makeClassicPanels()
{
    m_phonebook = new ClassicList(m_parts, Store::Phonebook, this);
    m_providers = new ClassicList(m_parts, Store::Providers, this);
    m_fraPBTB = makeListPanel(u"fraPBTB"_s, u"Telefonbuch"_s, m_phonebook->rows(), true);
    m_fraPBTB->setNote(classicNote, u"lblStatic0"_s);
    m_fraPBTB->view().setColumnCharacters({22, 26, 16, 18, 8, 18});
    m_fraPBNE = makeListPanel(u"fraPBNE"_s, u"Provider"_s, m_providers->rows(), true);
    m_fraPBNE->setNote(classicNote, u"lblStatic1"_s);
    m_fraPBNE->view().setColumnCharacters({30, 34});
    m_targets[ModePhonebook] = m_phonebook;
    m_targets[ModeProviders] = m_providers;
    countRows(*m_fraPBTB, u"Telefonbuch"_s);
    countRows(*m_fraPBNE, u"Provider"_s);
    for (ClassicList* list : {m_phonebook, m_providers}) {
        connect(list, &ClassicList::becameDirty, this, [this] { m_reminders->showKind(Reminders::Save); });
        connect(list, &ClassicList::menuWanted, this, &frmPB::popUp);
        connect(list, &ClassicList::ended, m_sta, &StatusArea::showResult);
    }
    for (auto [list, panel] : {std::pair(m_phonebook, m_fraPBTB), std::pair(m_providers, m_fraPBNE)})
        connect(list, &ClassicList::stateChanged, panel,
                [panel](ListState state) { panel->view().setPlaceholder(placeholderFor(state)); });
    // The provider list's reminder stays until the next change of section.
    connect(m_phonebook, &ClassicList::becameClean, this, [this] { m_reminders->hideKind(Reminders::Save); });
}

ListPanel* frmPB::makeListPanel(const QString& name, const QString& caption, toolkit::ListRows& rows,
                                bool plainASelects)
{
    auto* panel = new ListPanel(name, rows, plainASelects, this);
    panel->setCaption(caption);
    panel->view().setAccessibleName(caption);
    panel->view().setPlaceholder(placeholderFor(ListState::NotRead));
    connect(panel, &ListPanel::commandWanted, this, &frmPB::press);
    m_panels->addWidget(panel);
    return panel;
}

void frmPB::makeToolbar()
{
    m_tlb->setObjectName(u"tlb"_s);
    m_tlb->setAccessibleName(u"Befehle"_s);
    m_tlb->setMovable(false);
    m_tlb->setContextMenuPolicy(Qt::PreventContextMenu);
    m_tlb->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    m_tlb->setIconSize(QSize(28, 28));
    for (const CommandRow& row : commandTable()) {
        auto* action = new QAction(icon(row.key.toString()), row.menuText.toString(), this);
        action->setObjectName(row.key.toString());
        action->setIconText(row.caption.toString());
        if (row.command == Command::Delete) // the lists' own key: in a field it deletes a character
            action->setText(action->text() + u'\t' +
                            QKeySequence(QKeySequence::Delete).toString(QKeySequence::NativeText));
        connect(action, &QAction::triggered, this, [this, command = row.command] { press(command); });
        m_actions[row.command] = action;
        if (row.command == Command::Refresh || row.command == Command::Open || row.command == Command::Help)
            m_tlb->addSeparator();
        m_tlb->addAction(action);
        QWidget* button = m_tlb->widgetForAction(action);
        button->setAccessibleName(row.caption.toString());
        button->setFocusPolicy(Qt::TabFocus);
    }
    addToolBar(m_tlb);
}

void frmPB::makeMenuBar()
{
    m_formerStates = new QAction(u"F&rühere Stände..."_s, this);
    m_formerStates->setObjectName(u"formerStates"_s);
    m_formerStates->setShortcut(QKeySequence(u"Ctrl+H"_s));
    connect(m_formerStates, &QAction::triggered, this, &frmPB::showFormerStates);
    m_mnuList = menuBar()->addMenu(u"&Liste"_s);
    m_endOfCommands = m_mnuList->addSeparator();
    m_mnuList->addAction(m_formerStates);
    m_mnuList->addSeparator();
    auto* quit = m_mnuList->addAction(u"Been&den"_s, this, &QWidget::close);
    quit->setShortcut(QKeySequence(u"Ctrl+Q"_s));
    makeEditMenu();
    auto* sections = menuBar()->addMenu(u"&Gehe zu"_s);
    int number = 0;
    for (const NodeRow& row : navigationNodes(m_program.context.sy.PhoneType)) {
        if (row.key == nodes::Phone || row.parent == nodes::Sponsors)
            continue;
        QAction* go = sections->addAction(icon(row.icon.toString()), row.caption.toString());
        go->setShortcut(QKeySequence(u"Alt+%1"_s.arg(++number)));
        connect(go, &QAction::triggered, this, [this, key = row.key.toString()] { goTo(key); });
    }
    auto* help = menuBar()->addMenu(u"&Hilfe"_s);
    help->addAction(m_actions[Command::Help]);
    help->addSeparator();
    help->addAction(u"Ü&ber Kalmo"_s, this, [this] { showAbout(*this); })->setObjectName(u"about"_s);
}

QMenu* frmPB::makePopup(const PopupMenu& table, const std::function<void(int choice)>& choose)
{
    auto* menu = new QMenu(table.title.toString(), this);
    named(menu, table.name.toString(), table.spoken.toString());
    fillMenu(*menu, table, choose);
    return menu;
}

void frmPB::makeMenus()
{
    m_mnuOpen = makePopup(mnuOpen(), [this](int choice) {
        ClassicList* list = m_toolbarMode == ModeProviders ? m_providers : m_phonebook;
        if (list)
            list->openBackup(choice);
    });
    const auto import = [this](int choice) {
        openImport(choice == 1 ? ImportFrom::AddressBook : ImportFrom::File);
    };
    m_mnuImport = makePopup(mnuImport_TB(), import);
    m_mnuImportNE = makePopup(mnuImport_NE(), import);
}

void frmPB::layOut()
{
    m_splitter = new QSplitter(this);
    m_splitter->setObjectName(u"splitter"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_splitter->addWidget(m_tvwNavi);
    m_splitter->addWidget(m_panels);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({treeWidth, firstSize.width() - treeWidth});
    auto* central = new QWidget(this);
    auto* column = new QVBoxLayout(central);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_splitter, 1);
    column->addWidget(m_reminders);
    setCentralWidget(central);
    setStatusBar(m_sta);
    // The reminders below stay readable just while the phone is busy.
    m_sta->setBlocked({m_splitter, m_tlb, menuBar()});
    m_sta->showReady();
    m_tvwNavi->setFocus();
}

void frmPB::connectMmc()
{
    connect(m_mmc.get(), &obex::clsMmc::BusyOn, this, [this] {
        m_sta->SetBusy(true);
        m_sta->offerCancel(true);
    });
    connect(m_mmc.get(), &obex::clsMmc::BusyOff, this, [this] { m_sta->SetBusy(false); });
    connect(m_mmc.get(), &obex::clsMmc::BytesRxed, this, [this](qint64 count) { m_sta->showBytes(count); });
    connect(m_mmc.get(), &obex::clsMmc::LongTimeOutMsg, this,
            [this](const QString& text) { m_sta->setText(text); });
}

} // namespace kalmo::ui
