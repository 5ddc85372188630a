// The controls of the export dialog and where they are.

#include "app/Version.h"
#include "transfer/export/CsvTarget.h"
#include "ui/controls/FormScroll.h"
#include "ui/controls/LeaveCheck.h"
#include "ui/controls/Named.h"
#include "ui/controls/WrappedCheck.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/forms/frmExport.h"
#include "ui/help/HelpWindow.h"
#include "ui/icons/Icons.h"

#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>
#include <QStackedWidget>
#include <QToolButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct DestinationRow
{
    QStringView caption;
    QStringView icon;
};

constexpr std::array<DestinationRow, 4> destinations = {{
    {u"In eine neue Microsoft E&xcel Tabelle", u"xlsx"},
    {u"In eine neue Microsoft &Word Datei", u"docx"},
    {u"In eine *.&CSV Datei", u"csv"},
    {u"In eine *.&HTML Datei", u"html"},
}};

const std::array<QString, 2> comments = {
    u"Die Sortierreihenfolge der Zeilen im Export entspricht immer der aktuellen Sortierreihenfolge in der "
    u"ursprünglichen Tabelle.\nDurch Mausklick auf einen Spaltenkopf in der ursprünglichen Tabelle können "
    u"Sie die "
    u"Sortierreihenfolge ändern."_s,
    u"Die Export Einstellungen werden für JEDE Tabelle komplett einzeln abgespeichert und beim nächsten "
    u"Aufruf wieder "
    u"geladen."_s};

constexpr int columnCharacters = 30; // that the list of columns shows
constexpr int pathCharacters = 44;
constexpr int replacementCharacters = 8;
constexpr int commentCharacters = 44;

/// A text with further explanations.
QLabel* makeComment(int index)
{
    auto* label = named(new QLabel(comments[static_cast<size_t>(index)]), u"lblStaticComment%1"_s.arg(index));
    label->setWordWrap(true);
    label->setMinimumWidth(label->fontMetrics().averageCharWidth() * commentCharacters);
    return label;
}

QLabel* makeBuddyLabel(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

int charactersWide(const QWidget& widget, int characters)
{
    return widget.fontMetrics().averageCharWidth() * characters;
}

} // namespace

frmExport::frmExport(Program& program, QWidget* parent)
    : QDialog(parent), m_program(program), m_head(new QVBoxLayout),
      m_lvwCols(named(new QListWidget, u"lvwCols"_s, u"Spalten"_s)),
      m_cmdSelAllCols(named(new QPushButton(u"&Alle Spalten"_s), u"cmdSelAllCols"_s)),
      m_chkUseHeader(
          named(new WrappedCheck(u"Ü&berschriften der Spalten mit exportieren"_s), u"chkUseHeader"_s)),
      m_chkAddEmptyCol(
          named(new WrappedCheck(u"&Leerzeile unter Überschriften einfügen"_s), u"chkAddEmptyCol"_s)),
      m_fileOptions(new QStackedWidget), m_cmbCsvSep(named(new QComboBox, u"cmbCsvSep"_s, u"Trennzeichen"_s)),
      m_txtCsvPath(named(new QLineEdit, u"txtCsvPath"_s)),
      m_cmdPathSet(named(new QPushButton, u"cmdPathSet"_s, u"CSV Datei wählen"_s)),
      m_txtCsvReplace(named(new QLineEdit, u"txtCsvReplace"_s, u"Ersatz für Trennzeichen in den Daten"_s)),
      m_txtHtmlDestPath(named(new QLineEdit, u"txtHtmlDestPath"_s)),
      m_cmdSelHtmlDestPath(named(new QPushButton, u"cmdSelHtmlDestPath"_s, u"HTML Datei wählen"_s)),
      m_txtHtmlTemplatePath(named(new QLineEdit, u"txtHtmlTemplatePath"_s)),
      m_cmdSelHtmlTemplate(named(new QPushButton, u"cmdSelHtmlTemplate"_s, u"Vorlage wählen"_s)),
      m_chkOptimizeColWidth(
          named(new WrappedCheck(
                    u"&Spaltenbreite in Word und Excel an Inhalt anpassen (Achtung: kann bei vielen Spalten "
                    u"in Word Tabellen erzeugen, die über den Seitenrand stehen; ggf abschalten)"_s),
                u"chkOptimizeColWidth"_s)),
      m_chkCloseAfterExport(named(new WrappedCheck(u"Dieses Fenster nach erfol&greichem Export schließen"_s),
                                  u"chkCloseAfterExport"_s)),
      m_chkAutoOpenExportFile(
          named(new WrappedCheck(u"Erstellte Datei automatisch &öffnen"_s), u"chkAutoOpenExportFile"_s)),
      m_cmdExport(named(new QPushButton(u"Ex&port"_s), u"cmdExport"_s)),
      m_cmdAbbruch(named(new QPushButton(u"Abbrechen"_s), u"cmdAbbruch"_s)),
      m_sta(named(new StatusLabel, u"sta"_s, u"Status"_s)), m_prg(named(new ProgressStrip, u"prg"_s))
{
    setObjectName(u"frmExport"_s);
    setWindowTitle(app::productName() + u" - Export"_s);
    QWidget* columns = makeColumns();
    QWidget* rows = makeRows();
    QWidget* target = makeDestination();
    QWidget* choices = makeChoices();
    QWidget* buttons = makeSaveAndCancel(*this, m_cmdExport, m_cmdAbbruch, helpTopicExport);
    auto* right = new QVBoxLayout;
    right->addWidget(target, 1);
    right->addWidget(rows);
    auto* middle = new QHBoxLayout;
    middle->addWidget(columns, 2);
    middle->addLayout(right, 3);
    auto* layout = new QVBoxLayout(this);
    makeRoom(*layout);
    right->setSpacing(layout->spacing());
    middle->setSpacing(layout->spacing() * 2);
    layout->addLayout(m_head);
    layout->addLayout(middle, 1);
    layout->addWidget(choices);
    layout->addWidget(buttons);
    layout->addWidget(makeStatus());
    scrollAbove(*layout, layout->indexOf(buttons));
    m_busy = std::make_unique<WindowBusy>(QList<QWidget*>{columns, rows, target, choices, buttons});
    m_sta->SetText(u"Bereit."_s);
    checkFields();
    connectControls();
    guardChoices();
}

frmExport::~frmExport() = default;

QWidget* frmExport::makeColumns()
{
    auto* frame = new QGroupBox(u"Folgende Spalten exportieren"_s);
    auto* layout = new QVBoxLayout(frame);
    makeRoom(*layout);
    m_lvwCols->setMinimumWidth(charactersWide(*m_lvwCols, columnCharacters));
    m_lvwCols->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    layout->addWidget(m_lvwCols, 1);
    layout->addWidget(m_cmdSelAllCols, 0, Qt::AlignLeft);
    m_cmdSelAllCols->setAutoDefault(false);
    layout->addWidget(m_chkUseHeader);
    layout->addWidget(m_chkAddEmptyCol);
    return frame;
}

QWidget* frmExport::makeRows()
{
    auto* frame = new QGroupBox(u"Zeilen"_s);
    auto* layout = new QVBoxLayout(frame);
    makeRoom(*layout);
    for (int index = 0; index < std::ssize(m_optRows); ++index) {
        m_optRows[static_cast<size_t>(index)] = named(new QRadioButton, u"optRows%1"_s.arg(index));
        layout->addWidget(m_optRows[static_cast<size_t>(index)]);
    }
    layout->addWidget(makeComment(0));
    return frame;
}

QWidget* frmExport::makeDestination()
{
    auto* frame = new QGroupBox(u"Ziel"_s);
    auto* layout = new QVBoxLayout(frame);
    makeRoom(*layout);
    addDestinations(*layout);
    m_fileOptions->addWidget(m_picDestCsv = makeCsv());
    m_fileOptions->addWidget(m_picDestHtml = makeHtml());
    layout->addWidget(m_fileOptions);
    layout->addWidget(m_chkOptimizeColWidth);
    layout->addStretch(1);
    return frame;
}

void frmExport::addDestinations(QVBoxLayout& layout)
{
    auto* grid = new QGridLayout;
    grid->setColumnStretch(1, 1);
    grid->setVerticalSpacing(0);
    for (int index = 0; index < std::ssize(m_optDest); ++index) {
        const DestinationRow& row = destinations[static_cast<size_t>(index)];
        auto* choice = named(new QRadioButton(row.caption.toString()), u"optDest%1"_s.arg(index));
        auto* picture = named(new QToolButton, u"imgOptDest%1"_s.arg(index), choice->text().remove(u'&'));
        picture->setIcon(icon(row.icon.toString()));
        picture->setIconSize(QSize(24, 24));
        picture->setAutoRaise(true);
        picture->setFocusPolicy(Qt::NoFocus);
        connect(picture, &QToolButton::clicked, choice, [choice] { choice->setChecked(true); });
        grid->addWidget(picture, index, 0);
        grid->addWidget(choice, index, 1);
        m_optDest[static_cast<size_t>(index)] = choice;
    }
    layout.addLayout(grid);
}

QWidget* frmExport::makeCsv()
{
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    makeRoom(*grid);
    grid->setContentsMargins({});
    for (const transfer::SeparatorRow& row : transfer::separatorTable())
        m_cmbCsvSep->addItem(row.caption.toString());
    m_txtCsvReplace->setMaximumWidth(charactersWide(*m_txtCsvReplace, replacementCharacters));
    grid->setColumnStretch(1, 1);
    grid->addWidget(named(makeBuddyLabel(u"&Trennzeichen"_s, m_cmbCsvSep), u"lblCsvPreStatic"_s), 0, 0);
    grid->addWidget(m_cmbCsvSep, 0, 1, Qt::AlignLeft);
    grid->addWidget(makeBuddyLabel(u"&Datei"_s, m_txtCsvPath), 1, 0);
    grid->addWidget(makePathRow(m_txtCsvPath, m_cmdPathSet, u"CSV Datei"_s), 1, 1);
    auto* replacement = new QHBoxLayout;
    replacement->addWidget(
        makeBuddyLabel(u"T&rennzeichen in den Daten durch dieses Zeichen ersetzen"_s, m_txtCsvReplace));
    replacement->addWidget(m_txtCsvReplace);
    replacement->addStretch(1);
    grid->addLayout(replacement, 2, 0, 1, 2);
    return page;
}

QWidget* frmExport::makeHtml()
{
    auto* page = named(new QWidget, u"picDestHtml"_s);
    auto* grid = new QGridLayout(page);
    makeRoom(*grid);
    grid->setContentsMargins({});
    grid->setColumnStretch(1, 1);
    grid->addWidget(makeBuddyLabel(u"&Datei"_s, m_txtHtmlDestPath), 0, 0);
    grid->addWidget(makePathRow(m_txtHtmlDestPath, m_cmdSelHtmlDestPath, u"HTML Datei"_s), 0, 1);
    grid->addWidget(makeBuddyLabel(u"&Vorlage"_s, m_txtHtmlTemplatePath), 1, 0);
    grid->addWidget(makePathRow(m_txtHtmlTemplatePath, m_cmdSelHtmlTemplate, u"Vorlage"_s), 1, 1);
    grid->setRowStretch(2, 1);
    return page;
}

QWidget* frmExport::makePathRow(QLineEdit* field, QPushButton* button, const QString& spoken)
{
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    field->setAccessibleName(spoken);
    field->setMinimumWidth(charactersWide(*field, pathCharacters));
    button->setIcon(icon(u"folder"_s));
    button->setToolTip(button->accessibleName());
    button->setAutoDefault(false);
    layout->addWidget(field, 1);
    layout->addWidget(button);
    return row;
}

QWidget* frmExport::makeChoices()
{
    auto* choices = new QWidget;
    auto* layout = new QVBoxLayout(choices);
    layout->setContentsMargins({});
    layout->addWidget(m_chkAutoOpenExportFile);
    layout->addWidget(m_chkCloseAfterExport);
    layout->addWidget(makeComment(1));
    return choices;
}

QWidget* frmExport::makeStatus()
{
    auto* status = new QWidget;
    auto* layout = new QHBoxLayout(status);
    layout->setContentsMargins({});
    layout->addWidget(m_sta, 1);
    layout->addWidget(m_prg);
    status->setMinimumHeight(m_sta->sizeHint().height());
    return status;
}

void frmExport::checkFields()
{
    new LeaveCheck(*m_txtCsvReplace, m_cmdAbbruch, [this] { return replacementKeepsFocus(); });
    for (QLineEdit* field : {m_txtCsvPath, m_txtHtmlDestPath, m_txtHtmlTemplatePath})
        new LeaveCheck(*field, m_cmdAbbruch, [this, field] { return pathKeepsFocus(*field); });
}

} // namespace kalmo::ui
