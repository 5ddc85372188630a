#include "ui/forms/frmExport.h"

#include "app/Files.h"
#include "app/Version.h"
#include "transfer/export/Exporter.h"
#include "transfer/export/HtmlTarget.h"
#include "ui/controls/Named.h"
#include "ui/controls/ucHeadline.h"
#include "ui/forms/ChangeGuard.h"
#include "ui/window/mdlFormResize.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::CsvSeparator;
using transfer::Destination;
using transfer::ExportOptions;

namespace {

constexpr int columnRole = Qt::UserRole;  // number of the list's column, from 0
constexpr int keyRole = Qt::UserRole + 1; // "Col_1"

/// A start for a file dialog: the folder of the path that is shown, the one of the last time, or a default.
QString startFolder(const QString& path, const QString& last, const QString& fallback)
{
    const QString folder = path.isEmpty() ? QString() : QFileInfo(path).absolutePath();
    if (app::DirExists(folder))
        return folder;
    return last.isEmpty() ? fallback : last;
}

} // namespace

void frmExport::formPresent(const toolkit::ListRows& list, const QString& title,
                            const QList<int>& hiddenColumns, const QList<int>& untickedColumns,
                            CsvSeparator defaultSeparator)
{
    m_source.emplace(list, title, hiddenColumns, untickedColumns, defaultSeparator);
    m_head->addWidget(named(new ucHeadline(u"export"_s, u"Export: "_s + title), u"ucHeadline"_s));
    m_optRows[0]->setText(u"All&e %1 Einträge exportieren"_s.arg(list.count()));
    m_optRows[1]->setText(u"&Nur die markierten %1 Einträge exportieren"_s.arg(list.selectedRows().size()));
    showOptions(transfer::loadExportOptions(m_program.context, *m_source));
    RestoreFormLayout(*this, m_program.context.settings, Restore::SizeAlone);
}

void frmExport::done(int result)
{
    if (m_busy->isBusy())
        return;
    SaveFormLayout(*this, m_program.context.settings);
    QDialog::done(result);
}

void frmExport::connectControls()
{
    for (QRadioButton* choice : m_optDest)
        connect(choice, &QRadioButton::toggled, this, &frmExport::optDest_Click);
    connect(m_chkUseHeader, &QCheckBox::toggled, m_chkAddEmptyCol, &QWidget::setEnabled);
    connect(m_cmdSelAllCols, &QPushButton::clicked, this, &frmExport::cmdSelAllCols_Click);
    connect(m_cmdExport, &QPushButton::clicked, this, &frmExport::cmdExport_Click);
    connect(m_cmdPathSet, &QPushButton::clicked, this, [this] {
        chooseFile(*m_txtCsvPath, {u"cmdlgPath"_s, u" - Exportdatei wählen"_s, Purpose::CsvFile});
    });
    connect(m_cmdSelHtmlDestPath, &QPushButton::clicked, this, [this] {
        chooseFile(*m_txtHtmlDestPath,
                   {u"cmdlgHtmlDest"_s, u" - html Datei für Export wählen"_s, Purpose::HtmlFile});
    });
    connect(m_cmdSelHtmlTemplate, &QPushButton::clicked, this, [this] {
        chooseFile(*m_txtHtmlTemplatePath,
                   {u"cmdlgHtmlTemplate"_s, u" - html Vorlage für Export wählen"_s, Purpose::Template});
    });
}

void frmExport::guardChoices()
{
    m_guard = new ChangeGuard(*this, *m_cmdExport, m_program.context);
    m_guard->setQuestion(u"Kalmo merkt sich Ihre neuen Einstellungen erst beim Export.\n\n"
                         u"Sollen sie verworfen werden?"_s);
    m_guard->watch([this] {
        QString ticks;
        for (int row = 0; row < m_lvwCols->count(); ++row)
            ticks += m_lvwCols->item(row)->checkState() == Qt::Checked ? u'x' : u'-';
        return ticks;
    });
}

void frmExport::showOptions(const ExportOptions& options)
{
    fillColumns(options.columns);
    m_chkUseHeader->setChecked(options.useHeader);
    m_chkAddEmptyCol->setChecked(options.addEmptyLine);
    m_chkAddEmptyCol->setEnabled(options.useHeader);
    m_optRows[options.onlySelected ? 1 : 0]->setChecked(true);
    m_optDest[static_cast<size_t>(options.destination)]->setChecked(true);
    m_cmbCsvSep->setCurrentIndex(static_cast<int>(options.separator));
    m_txtCsvReplace->setText(options.replacement);
    m_txtCsvPath->setText(options.csvPath);
    m_txtHtmlTemplatePath->setText(options.templatePath);
    m_txtHtmlDestPath->setText(options.htmlPath);
    m_chkOptimizeColWidth->setChecked(options.fitsWidths);
    m_chkCloseAfterExport->setChecked(options.closesAfterExport);
    m_chkAutoOpenExportFile->setChecked(options.opensFile);
    optDest_Click();
}

void frmExport::fillColumns(const QList<int>& ticked)
{
    for (const int column : m_source->offeredColumns()) {
        auto* item = new QListWidgetItem(m_source->list.columns()[column].title, m_lvwCols);
        item->setData(columnRole, column);
        item->setData(keyRole, u"Col_%1"_s.arg(column + 1));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        item->setCheckState(ticked.contains(column) ? Qt::Checked : Qt::Unchecked);
    }
    m_lvwCols->setCurrentRow(0);
}

ExportOptions frmExport::chosenOptions() const
{
    ExportOptions options{.destination = destination(),
                          .separator = separator(),
                          .replacement = m_txtCsvReplace->text(),
                          .csvPath = m_txtCsvPath->text(),
                          .templatePath = m_txtHtmlTemplatePath->text(),
                          .htmlPath = m_txtHtmlDestPath->text(),
                          .useHeader = m_chkUseHeader->isChecked(),
                          .addEmptyLine = m_chkAddEmptyCol->isChecked(),
                          .fitsWidths = m_chkOptimizeColWidth->isChecked(),
                          .closesAfterExport = m_chkCloseAfterExport->isChecked(),
                          .opensFile = m_chkAutoOpenExportFile->isChecked(),
                          .onlySelected = m_optRows[1]->isChecked()};
    for (int row = 0; row < m_lvwCols->count(); ++row) {
        const QListWidgetItem* item = m_lvwCols->item(row);
        if (item->checkState() == Qt::Checked)
            options.columns.append(item->data(columnRole).toInt());
    }
    return options;
}

Destination frmExport::destination() const
{
    for (size_t index = 0; index < m_optDest.size(); ++index) {
        if (m_optDest[index]->isChecked())
            return static_cast<Destination>(index);
    }
    return Destination::Csv;
}

CsvSeparator frmExport::separator() const
{
    return static_cast<CsvSeparator>(m_cmbCsvSep->currentIndex());
}

void frmExport::optDest_Click()
{
    const Destination chosen = destination();
    const bool isOffice = chosen == Destination::Excel || chosen == Destination::Word;
    m_fileOptions->setCurrentWidget(chosen == Destination::Html ? m_picDestHtml : m_picDestCsv);
    m_picDestCsv->setEnabled(chosen == Destination::Csv);
    m_chkOptimizeColWidth->setEnabled(isOffice);
    m_chkAutoOpenExportFile->setEnabled(!isOffice);
}

void frmExport::cmdSelAllCols_Click()
{
    for (int row = 0; row < m_lvwCols->count(); ++row)
        m_lvwCols->item(row)->setCheckState(Qt::Checked);
}

void frmExport::cmdExport_Click()
{
    if (m_busy->isBusy() ||
        (m_txtCsvReplace->isVisible() && m_txtCsvReplace->isEnabled() && replacementKeepsFocus()))
        return;
    // The Enter key presses the button without leaving the field.
    for (const QLineEdit* field : {m_txtCsvPath, m_txtHtmlTemplatePath, m_txtHtmlDestPath}) {
        if (field->hasFocus() && pathKeepsFocus(*field))
            return;
    }
    transfer::Exporter exporter({.context = m_program.context,
                                 .desktop = m_program.desktop,
                                 .source = *m_source,
                                 .busy = m_busy.get(),
                                 .progress = {m_sta, m_prg}},
                                chosenOptions());
    const bool done = exporter.run();
    m_txtCsvPath->setText(exporter.options().csvPath);
    m_txtHtmlDestPath->setText(exporter.options().htmlPath);
    if (!done)
        return;
    m_guard->keep();
    if (exporter.options().closesAfterExport)
        accept();
}

void frmExport::chooseFile(QLineEdit& field, const FileChoice& choice)
{
    app::Context& context = m_program.context;
    const bool isCsv = choice.purpose == Purpose::CsvFile;
    const QString fallback = choice.purpose == Purpose::Template
                                 ? transfer::templateFolder(context.sy)
                                 : QDir(context.sy.Paths.Storage).filePath(u"Export"_s);
    const toolkit::FileType type =
        isCsv ? toolkit::FileType{u"CSV Datei (*.csv)"_s, {u"*.csv"_s}}
              : toolkit::FileType{u"HTML Datei (*.htm;*.html)"_s, {u"*.htm"_s, u"*.html"_s}};
    const toolkit::FileRequest request{
        .title = app::productName() + choice.title,
        .folder = startFolder(field.text(), transfer::lastDialogFolder(context, *m_source, choice.dialog),
                              fallback),
        .name = QFileInfo(field.text()).fileName(),
        .types = {type},
        .acceptLabel = u"OK"_s};
    const QString path = choice.purpose == Purpose::Template ? context.dialogs.OpenFile(request)
                                                             : context.dialogs.SaveFile(request);
    if (path.isEmpty())
        return;
    field.setText(path);
    transfer::setLastDialogFolder(context, *m_source, choice.dialog, QFileInfo(path).absolutePath());
}

bool frmExport::keepsFocus(const QString& fault) const
{
    if (!fault.isEmpty())
        m_program.context.dialogs.Show({.text = fault, .icon = toolkit::Icon::Information});
    return !fault.isEmpty();
}

bool frmExport::replacementKeepsFocus() const
{
    const bool isRight = transfer::isReplacement(m_txtCsvReplace->text(), separator());
    return keepsFocus(isRight ? QString() : transfer::rowOf(separator()).refusal.toString());
}

bool frmExport::pathKeepsFocus(const QLineEdit& field) const
{
    return keepsFocus(transfer::exportPathFault(field.text()));
}

} // namespace kalmo::ui
