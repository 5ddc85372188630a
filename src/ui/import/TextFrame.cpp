#include "ui/import/TextFrame.h"

#include "ui/controls/Named.h"
#include "ui/controls/WideRows.h"
#include "ui/forms/EntryDialogs.h"
#include "ui/window/ToolbarTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QMenu>
#include <QSignalBlocker>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Shape;

namespace {

const QString noFile = u"Bitte Datei auswählen..."_s;

/// Names of the columns' boxes, followed by their place.
QString columnName(Shape shape, size_t field)
{
    return (shape == Shape::Classic ? u"cmbCsvField"_s : u"cmbCsvFieldVCF"_s) + QString::number(field);
}

} // namespace

TextFrame::TextFrame(Shape shape, QWidget* parent)
    : QGroupBox(u"Quelldatei"_s, parent), m_shape(shape),
      m_cmdCsvOpen(named(new QPushButton(u"Datei zum Import ö&ffnen"_s), u"cmdCsvOpen"_s)),
      m_txtCsvPath(named(new QLineEdit(noFile), u"txtCsvPath"_s, u"Datei zum Import"_s)),
      m_cmbCsvSep(named(new QComboBox, u"cmbCsvSep"_s, u"Trennzeichen"_s)),
      m_chkFilter(named(new QCheckBox(u"&Zeichen ausfiltern"_s), u"chkCsvImportUmklammernd"_s)),
      m_txtFilter(named(new QLineEdit, u"txtCsvImportUmklammernd"_s, u"Zeichen, die ausgefiltert werden"_s))
{
    setObjectName(shape == Shape::Classic ? u"fraCSV"_s : u"fraCsvVcf"_s);
    auto* column = new QVBoxLayout(this);
    makeRoom(*column);
    column->addWidget(makeFileLine());
    column->addWidget(makeLayoutLine());
    column->addWidget(makeColumns());
}

QWidget* TextFrame::makeFileLine()
{
    m_cmdCsvOpen->setAutoDefault(false);
    m_cmdCsvOpen->setMenu(makeMenu());
    m_txtCsvPath->setReadOnly(true);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_cmdCsvOpen);
    row->addWidget(m_txtCsvPath, 1);
    return line;
}

QMenu* TextFrame::makeMenu()
{
    auto* menu = named(new QMenu(this), u"mnuOpen"_s, u"Datei zum Import öffnen"_s);
    fillMenu(*menu, mnuOpen(), [this](int choice) { Q_EMIT fileWanted(choice); });
    return menu;
}

QWidget* TextFrame::makeLayoutLine()
{
    m_cmbCsvSep->addItems({u"Komma [,]"_s, u"Semikolon [;]"_s, u"Tab [\t]"_s});
    m_txtFilter->setToolTip(
        u"Filtereingabe - eingegebene Zeichen vor und nach Nutzdaten werden entfernt. Kann z.B. "
        u"Klammern und Anführungsstrich aus [\"1234\"] entfernen"_s);
    m_txtFilter->setEnabled(false);
    m_txtFilter->setMaximumWidth(fontMetrics().averageCharWidth() * 14);
    auto* label = new QLabel(u"Trennzeichen"_s);
    label->setBuddy(m_cmbCsvSep);
    auto* line = new QWidget;
    auto* row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    auto* parting = new QHBoxLayout;
    parting->addWidget(label);
    parting->addWidget(m_cmbCsvSep);
    parting->addSpacing(fontMetrics().averageCharWidth() * 3);
    parting->addWidget(m_chkFilter);
    parting->addWidget(m_txtFilter);
    parting->addStretch();
    row->addLayout(parting, 1);
    if (m_shape == Shape::Vcard)
        row->addLayout(makeTime());
    stackIfTooWide(*row);
    connect(m_cmbCsvSep, &QComboBox::currentIndexChanged, this, &TextFrame::filterChanged);
    connect(m_chkFilter, &QCheckBox::toggled, this, &TextFrame::clickFilter);
    connect(m_txtFilter, &QLineEdit::textChanged, this, &TextFrame::filterChanged);
    return line;
}

QLayout* TextFrame::makeTime()
{
    m_cmbTime =
        named(new QComboBox, u"cmbGebuTimeDefault"_s, u"Uhrzeit, wenn nicht im Jahrestag enthalten"_s);
    m_cmbTime->addItems(transfer::halfHours());
    m_cmbTime->setCurrentText(transfer::TextOptions().defaultTime);
    connect(m_cmbTime, &QComboBox::currentIndexChanged, this, &TextFrame::changed);
    auto* ahead = new QLabel(u"&Uhrzeit"_s);
    ahead->setBuddy(m_cmbTime);
    auto* row = new QHBoxLayout;
    row->addWidget(ahead);
    row->addWidget(m_cmbTime);
    row->addWidget(new QLabel(u"wenn nicht im Jahrestag enthalten"_s));
    row->addStretch();
    return row;
}

QWidget* TextFrame::makeColumns()
{
    auto* grid = new QWidget;
    auto* cells = new QGridLayout(grid);
    cells->setContentsMargins(0, 0, 0, 0);
    const auto fields = transfer::fieldsOf(m_shape);
    QStringList titles;
    for (size_t field = 0; field < fields.size(); ++field) {
        const QString title = fields[field].title.toString();
        titles.append(title);
        auto* box = named(new QComboBox, columnName(m_shape, field), u"Spalte für "_s + title);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(9);
        connect(box, &QComboBox::currentIndexChanged, this, &TextFrame::changed);
        m_columns.append(box);
    }
    placeBelowTitles(*cells, m_columns, titles);
    return grid;
}

/// Off empties the text, on moves the focus there; both rebuild the preview.
void TextFrame::clickFilter(bool checked)
{
    {
        const QSignalBlocker quiet(m_txtFilter);
        m_txtFilter->setEnabled(checked);
        if (!checked)
            m_txtFilter->clear();
    }
    if (checked)
        m_txtFilter->setFocus();
    Q_EMIT filterChanged();
}

void TextFrame::showOpened(const QString& path, const transfer::OpenedText& opened)
{
    const bool hasFile = !path.isEmpty();
    m_path = path;
    m_txtCsvPath->setText(hasFile ? path : noFile);
    m_txtCsvPath->setToolTip(path);
    if (!hasFile)
        return;
    m_opened = opened;
    m_cmbCsvSep->setCurrentIndex(static_cast<int>(opened.options.layout.separator));
    const QString filter = opened.options.layout.filter;
    {
        const QSignalBlocker quiet(m_chkFilter);
        m_chkFilter->setChecked(!filter.isEmpty());
        m_txtFilter->setEnabled(!filter.isEmpty());
    }
    m_txtFilter->setText(filter);
    for (size_t field = 0; field < static_cast<size_t>(m_columns.size()); ++field) {
        QComboBox* box = m_columns[static_cast<qsizetype>(field)];
        box->clear();
        box->addItems(opened.headings);
        if (transfer::mayBeUnused(m_shape, transfer::fieldsOf(m_shape)[field].kind) &&
            !opened.headings.isEmpty())
            box->addItem(transfer::notUsedText.toString());
        const int column = opened.options.columns[field];
        box->setCurrentIndex(column == transfer::unusedColumn ? box->count() - 1 : column);
    }
}

QString TextFrame::filter() const
{
    return m_txtFilter->text();
}

QStringList TextFrame::chosenHeadings() const
{
    QStringList headings;
    for (const QComboBox* box : m_columns)
        headings.append(box->currentText());
    return headings;
}

void TextFrame::take(transfer::TextOptions& options) const
{
    options.layout.separator = static_cast<transfer::Separator>(m_cmbCsvSep->currentIndex());
    options.layout.filter = filter();
    if (m_cmbTime)
        options.defaultTime = m_cmbTime->currentText();
    for (size_t field = 0; field < static_cast<size_t>(m_columns.size()); ++field) {
        const int column = m_columns[static_cast<qsizetype>(field)]->currentIndex();
        options.columns[field] = column < m_opened.headings.size() ? column : transfer::unusedColumn;
    }
}

} // namespace kalmo::ui
