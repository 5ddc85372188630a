#include "ui/import/frmImportPb.h"

#include "app/Version.h"
#include "transfer/import/ImportSteps.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/Named.h"
#include "ui/controls/ScreenRoom.h"
#include "ui/controls/WideRows.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/help/HelpWindow.h"
#include "ui/import/AddressFrame.h"
#include "ui/import/HintList.h"
#include "ui/import/NumberFrame.h"
#include "ui/import/PreviewModel.h"
#include "ui/import/TextFrame.h"
#include "ui/lists/FilteredView.h"
#include "ui/lists/ListLayout.h"
#include "ui/lists/SearchLine.h"
#include "ui/window/ConnectionLight.h"
#include "ui/window/mdlFormResize.h"
#include "ui/window/StatusArea.h"

#include <QAction>
#include <QCheckBox>
#include <QHeaderView>
#include <QRadioButton>
#include <QShortcut>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using transfer::Shape;

namespace {

constexpr QSize firstSize(1000, 780);

const QString fileHelp = u"Dieses Menü ermöglicht den Import von Namen und Telefonnummern aus einer *.CSV "
                         u"oder Textdatei. Als Trennzeichen "
                         u"sind Komma, Semikolon oder Tabulator möglich."_s;
const QString bookHelp = u"Das Windows Adressbuch (WAB) von Outlook Express kann für jeden Kontakt mehrere "
                         u"Nummern speichern; das Gigaset "
                         u"kann jedoch immer nur eine Nummer pro Eintrag aufnehmen. Es ist daher notwendig, "
                         u"pro Unternummer einen eigenen, "
                         u"neuen Eintrag zu erzeugen."_s;
const QString anyHelp =
    u" Mit Hilfe der Einstellungen und der Vorschauliste können Sie die neuen Einträge Ihren "
    u"Wünschen anpassen."_s;
const QString previewHelp = u"Sie können jeden Eintrag per Häkchen zum Import auswählen. Einträge, die zu "
                            u"lang für das Telefonbuch sind oder "
                            u"keinen Namen oder keine Nummer haben, sind rot markiert."_s;

QLabel* wrapped(const QString& text, const QString& name)
{
    auto* label = named(new QLabel(text), name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

frmImportPb::frmImportPb(Program& program, ImportLists lists, ImportFrom source, QWidget* parent)
    : QDialog(parent), m_program(program), m_lists(std::move(lists)), m_from(source),
      m_shape(transfer::shapeFor(program.context.sy.PhoneType)),
      m_remembered(transfer::loadImportOptions(program.context.settings)),
      m_model(new PreviewModel(m_shape, this)), m_view(new FilteredView), m_sta(new StatusArea(program.line)),
      m_numberFrame(new NumberFrame(m_shape, m_remembered.options.numbers, program.context.dialogs)),
      m_hints(new HintList), m_lblHeader(named(new QLabel, u"lblHeader"_s)),
      m_lblCounts(named(new QLabel, u"lblCounts"_s)),
      m_optDest0(named(new QRadioButton(u"&Telefonbuch"_s), u"optDest0"_s)),
      m_optDest1(named(new QRadioButton(u"P&roviderliste"_s), u"optDest1"_s)),
      m_cmdImport(named(new QPushButton(u"I&mportieren"_s), u"cmdImport"_s)),
      m_cmdAbbruch(named(new QPushButton(u"Abbru&ch"_s), u"cmdAbbruch"_s)), m_content(new QWidget)
{
    setObjectName(u"frmImportPb"_s);
    setWindowTitle(app::productName() + u" - Telefonbuch Import"_s);
    setWindowModality(Qt::WindowModal);
    m_book = transfer::clsWab({.BusyStart =
                                   [this] {
                                       m_sta->progress().start(0, 0);
                                       m_sta->setText(u"Windows Adressbuch wird eingelesen..."_s);
                                       m_sta->repaint();
                                   },
                               .Reading = [this] { return advance(0, 0); },
                               .BusyEnd =
                                   [this] {
                                       m_sta->progress().hide();
                                       m_sta->setText({});
                                   }});
    auto* rows = new QVBoxLayout(m_content);
    makeRoom(*rows);
    rows->addWidget(makeHead());
    if (source == ImportFrom::File)
        rows->addWidget(m_textFrame = new TextFrame(m_shape));
    else
        rows->addWidget(m_addressFrame = new AddressFrame(m_shape, m_remembered.options.addresses,
                                                          program.context.dialogs));
    rows->addWidget(m_numberFrame);
    rows->addWidget(makeCommands());
    rows->addWidget(m_hints);
    rows->addWidget(new SearchLine(*m_view));
    rows->addWidget(m_view, 1);
    QWidget* buttons = makeButtons();
    rows->addWidget(buttons);
    scrollAbove(*rows, rows->indexOf(buttons));
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_content, 1);
    column->addWidget(m_sta);
    makeView();
    connectControls();
    guardChoices();
    m_sta->setBlocked({m_content});
    m_sta->findChild<ConnectionLight*>()->hide(); // a search has no place here
    m_sta->setSizeGripEnabled(true);
    resizeWithinScreen(*this, firstSize);
    RestoreFormLayout(*this, program.context.settings);
    Form_Present(Store::Phonebook);
    m_loading = false;
    showCounts();
}

frmImportPb::~frmImportPb()
{
    transfer::ImportOptions chosen;
    chosen.markExisting = m_chkMark0->isChecked();
    chosen.existingByNumber = m_chkMark1->isChecked();
    transfer::saveMarkingOptions(m_program.context.settings, chosen);
    SaveFormLayout(*this, m_program.context.settings);
    saveColumns(*m_view, m_program.context.settings, objectName());
}

QWidget* frmImportPb::makeHead()
{
    QFont bold = m_lblHeader->font();
    bold.setBold(true);
    m_lblHeader->setFont(bold);
    m_lblHeader->setWordWrap(true);
    auto* head = new QWidget;
    auto* rows = new QVBoxLayout(head);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* first = new QHBoxLayout;
    first->addWidget(m_lblHeader, 1);
    first->addWidget(makeDestination());
    rows->addLayout(first);
    rows->addWidget(wrapped((m_from == ImportFrom::File ? fileHelp : bookHelp) + anyHelp, u"lblHelp0"_s));
    return head;
}

QWidget* frmImportPb::makeDestination()
{
    auto* box = new QWidget;
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(new QLabel(u"Import in:"_s));
    row->addWidget(m_optDest0);
    row->addWidget(m_optDest1);
    box->setVisible(m_shape == Shape::Classic);
    const auto show = [this] {
        m_lblHeader->setText(u"*.CSV und Windows Adressbuch WAB (Outlook Express) Import > "_s +
                             (m_optDest1->isChecked() ? u"Providerliste"_s : u"Telefonbuch"_s));
    };
    connect(m_optDest1, &QRadioButton::toggled, this, show);
    show();
    return box;
}

QCheckBox* frmImportPb::makeCheck(const QString& text, const QString& name, bool checked)
{
    auto* box = named(new QCheckBox(text), name);
    box->setChecked(checked);
    return box;
}

QPushButton* frmImportPb::makeButton(const QString& text, const QString& name, void (frmImportPb::*clicked)())
{
    auto* button = named(new QPushButton(text), name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, clicked);
    return button;
}

QWidget* frmImportPb::makeCommands()
{
    auto* box = new QWidget;
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    auto* marks = new QHBoxLayout;
    marks->addWidget(makeButton(u"A&lle"_s, u"cmdSelAll"_s, &frmImportPb::cmdSelAll_Click));
    marks->addWidget(makeButton(u"&Keiner"_s, u"cmdSelNon"_s, &frmImportPb::cmdSelNon_Click));
    marks->addWidget(makeButton(u"Markiert&e wählen"_s, u"cmdSelSet"_s, &frmImportPb::cmdSelSet_Click));
    marks->addWidget(makeButton(u"Markierte a&bwählen"_s, u"cmdSelUnset"_s, &frmImportPb::cmdSelUnset_Click));
    marks->addStretch();
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addLayout(marks, 1);
    row->addWidget(makePreviewOptions());
    stackIfTooWide(*row);
    column->addWidget(wrapped(previewHelp, u"lblHelp1"_s));
    column->addWidget(line);
    return box;
}

QWidget* frmImportPb::makePreviewOptions()
{
    const transfer::ImportOptions& options = m_remembered.options;
    m_chkMark0 = makeCheck(u"Vorhan&dene markieren"_s, u"chkMarkExistingContacts0"_s, options.markExisting);
    m_chkMark1 =
        makeCheck(u"nur &Nummern vergleichen"_s, u"chkMarkExistingContacts1"_s, options.existingByNumber);
    m_chkAutoRefresh = makeCheck(u"aut&omatisch"_s, u"chkPreviewAutoRefresh"_s, m_remembered.refreshAtOnce);
    m_chkAutoRefresh->setToolTip(u"Die Vorschau nach jeder Änderung der Einstellungen aktualisieren"_s);
    QPushButton* refreshButton =
        makeButton(u"Vor&schau aktualisieren"_s, u"cmdRefresh"_s, &frmImportPb::RebuildPreview);
    auto* box = new QWidget;
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : QList<QWidget*>{m_chkMark0, m_chkMark1, refreshButton, m_chkAutoRefresh})
        row->addWidget(widget);
    return box;
}

QWidget* frmImportPb::makeButtons()
{
    m_cmdImport->setDefault(true);
    m_cmdAbbruch->setAutoDefault(false);
    auto* box = new QWidget;
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_lblCounts, 1);
    row->addWidget(m_cmdImport);
    row->addWidget(m_cmdAbbruch);
    return box;
}

void frmImportPb::makeView()
{
    named(m_view, m_shape == Shape::Classic ? u"lvwPreview"_s : u"lvwVCF"_s, u"Vorschau"_s);
    m_view->setModel(m_model);
    m_view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed);
    m_view->setMinimumHeight(fontMetrics().lineSpacing() * 6);
    m_view->header()->setSectionsClickable(true);
    m_view->header()->setStretchLastSection(true);
    const int width = fontMetrics().averageCharWidth() * (m_shape == Shape::Classic ? 34 : 20);
    for (int column = 0; column < m_model->columnCount(); ++column)
        m_view->header()->resizeSection(column, width);
    restoreColumns(*m_view, m_program.context.settings, objectName());
    makeContextMenu();
}

/// The menu offers the actions of the buttons and those of other lists.
void frmImportPb::makeContextMenu()
{
    const auto entry = [this](const QString& text, const QKeySequence& key, const auto& run) {
        m_view->addAction(text, key, m_view, run); // in a field these keys mean its text
    };
    const auto ofButton = [this, entry](const char* name, const QKeySequence& key = {}) {
        auto* button = findChild<QPushButton*>(QLatin1StringView(name));
        entry(button->text(), key, [button] { button->click(); });
    };
    const auto gap = [this] { m_view->addAction(QString())->setSeparator(true); };
    for (const char* name : {"cmdSelAll", "cmdSelNon", "cmdSelSet", "cmdSelUnset"})
        ofButton(name);
    gap();
    ofButton("cmdRefresh", Qt::Key_F5);
    gap();
    entry(u"Alles &markieren"_s, QKeySequence::SelectAll, [this] { m_view->selectAll(); });
    entry(u"Ko&pieren"_s, QKeySequence::Copy, [this] { m_view->copySelected(); });
    entry(u"S&uchen"_s, QKeySequence::Find, [this] { m_view->wantSearch(); });
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void frmImportPb::connectControls()
{
    connect(m_numberFrame, &NumberFrame::changed, this, &frmImportPb::refresh);
    m_numberFrame->guardAgainst(m_cmdAbbruch);
    if (m_textFrame) {
        connect(m_textFrame, &TextFrame::changed, this, &frmImportPb::refresh);
        connect(m_textFrame, &TextFrame::filterChanged, this, &frmImportPb::RebuildPreview);
        connect(m_textFrame, &TextFrame::fileWanted, this, &frmImportPb::openFile);
    } else {
        connect(m_addressFrame, &AddressFrame::changed, this, &frmImportPb::refresh);
        connect(m_addressFrame, &AddressFrame::bookWanted, this, &frmImportPb::askForBook);
        m_addressFrame->guardAgainst(m_cmdAbbruch);
    }
    for (const QCheckBox* box : {m_chkMark0, m_chkMark1})
        connect(box, &QCheckBox::toggled, this, &frmImportPb::RebuildPreview);
    connect(m_hints, &HintList::mendingWanted, this, &frmImportPb::mend);
    connect(m_model, &PreviewModel::checksChanged, this, &frmImportPb::showCounts);
    connect(m_view, &FilteredView::filtered, this, &frmImportPb::showCounts);
    connect(
        m_model, &PreviewModel::checkRefused, this,
        [this] { m_program.context.dialogs.Show(transfer::messageOfRefusedCheck()); }, Qt::QueuedConnection);
    connect(m_view->header(), &QHeaderView::sectionClicked, this, &frmImportPb::sortBy);
    connect(m_cmdImport, &QPushButton::clicked, this, &frmImportPb::cmdImport_Click);
    connect(m_cmdAbbruch, &QPushButton::clicked, this, &frmImportPb::reject);
    auto* help = new QShortcut(QKeySequence::HelpContents, this);
    connect(help, &QShortcut::activated, this, [] { openHelp(helpTopicImport); });
    if (m_lists.store) {
        const obex::clsMmc& client = m_lists.store->client();
        connect(&client, &obex::clsMmc::BytesRxed, m_sta, &StatusArea::showBytes);
        connect(&client, &obex::clsMmc::LongTimeOutMsg, m_sta, &StatusArea::setText);
    }
}

/// The choices for a file count as changed from the time when it was read.
void frmImportPb::guardChoices()
{
    m_guard = new ChangeGuard(*this, *m_cmdImport, m_program.context);
    m_guard->setQuestion(u"Sie haben Ihre Auswahl noch nicht importiert.\n\nSoll sie verworfen werden?"_s);
    m_guard->watch([this] {
        QString rows;
        for (int row = 0; row < m_model->rowCount(); ++row) {
            const QModelIndex name = m_model->index(row, 0);
            rows += name.data(Qt::CheckStateRole).toInt() == Qt::Checked ? u'x' : u'-';
            rows += name.data().toString();
        }
        return rows;
    });
}

void frmImportPb::Form_Present(Store destination)
{
    (destination == Store::Providers ? m_optDest1 : m_optDest0)->setChecked(true);
}

void frmImportPb::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (m_wasShown || event->spontaneous())
        return;
    m_wasShown = true;
    if (!m_given.isEmpty())
        QMetaObject::invokeMethod(this, &frmImportPb::takeGiven, Qt::QueuedConnection);
    else if (m_from == ImportFrom::AddressBook)
        QMetaObject::invokeMethod(this, &frmImportPb::activateBook, Qt::QueuedConnection);
}

void frmImportPb::reject()
{
    if (m_sta->isBusy() || m_isPausing) {
        // A preview stops, then the dialog closes. The user is asked before a transfer to the phone stops.
        m_closeWanted = m_building.isValid() || m_isPausing;
        if (!m_closeWanted)
            askToStop();
        return;
    }
    QDialog::reject();
}

} // namespace kalmo::ui
