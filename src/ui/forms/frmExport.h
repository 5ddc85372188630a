#pragma once

#include "transfer/export/ExportOptions.h"
#include "ui/adaptors/ProgressWidgets.h"
#include "ui/Program.h"

#include <QDialog>

#include <array>
#include <memory>
#include <optional>

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QStackedWidget;
class QVBoxLayout;

namespace kalmo::ui {

class ChangeGuard;

/// Exports a list: which columns and rows, where to, and in what form. The choices are remembered
/// for each list.
class frmExport : public QDialog
{
    Q_OBJECT

public:
    explicit frmExport(Program& program, QWidget* parent = nullptr);
    ~frmExport() override;

    /// Takes the list, which has to outlive the form, and shows its columns and the remembered options.
    /// Columns count from 0. The hidden ones are not offered, and the unticked ones are offered but not
    /// ticked at first. Part of the described interface: the program hides some, and leaves the other two as
    /// they are.
    void formPresent(const toolkit::ListRows& list, const QString& title,
                     const QList<int>& hiddenColumns = {}, const QList<int>& untickedColumns = {},
                     transfer::CsvSeparator defaultSeparator = transfer::CsvSeparator::Comma);

    void done(int result) override;

private:
    enum class Purpose { CsvFile, HtmlFile, Template };
    /// One of the three file dialogs.
    struct FileChoice
    {
        QString dialog; ///< name that its folder is remembered under
        QString title;  ///< after the product's name
        Purpose purpose;
    };

    // Construction, in a file of its own
    QWidget* makeColumns();
    QWidget* makeRows();
    QWidget* makeDestination();
    void addDestinations(QVBoxLayout& layout);
    QWidget* makeCsv();
    QWidget* makeHtml();
    QWidget* makeChoices();
    QWidget* makeStatus();
    void checkFields();
    void guardChoices();
    QWidget* makePathRow(QLineEdit* field, QPushButton* button, const QString& spoken);

    void connectControls();
    void showOptions(const transfer::ExportOptions& options);
    transfer::ExportOptions chosenOptions() const;
    void fillColumns(const QList<int>& ticked);
    transfer::Destination destination() const;
    transfer::CsvSeparator separator() const;
    void optDest_Click();
    void cmdSelAllCols_Click();
    void cmdExport_Click();
    void chooseFile(QLineEdit& field, const FileChoice& choice);
    bool keepsFocus(const QString& fault) const;
    bool replacementKeepsFocus() const;
    bool pathKeepsFocus(const QLineEdit& field) const;

    Program& m_program;
    std::optional<transfer::ExportSource> m_source;
    QVBoxLayout* m_head;
    QListWidget* m_lvwCols;
    QPushButton* m_cmdSelAllCols;
    QCheckBox* m_chkUseHeader;
    QCheckBox* m_chkAddEmptyCol;
    std::array<QRadioButton*, 2> m_optRows;
    std::array<QRadioButton*, 4> m_optDest;
    QStackedWidget* m_fileOptions;
    QWidget* m_picDestCsv = nullptr;
    QWidget* m_picDestHtml = nullptr;
    QComboBox* m_cmbCsvSep;
    QLineEdit* m_txtCsvPath;
    QPushButton* m_cmdPathSet;
    QLineEdit* m_txtCsvReplace;
    QLineEdit* m_txtHtmlDestPath;
    QPushButton* m_cmdSelHtmlDestPath;
    QLineEdit* m_txtHtmlTemplatePath;
    QPushButton* m_cmdSelHtmlTemplate;
    QCheckBox* m_chkOptimizeColWidth;
    QCheckBox* m_chkCloseAfterExport;
    QCheckBox* m_chkAutoOpenExportFile;
    QPushButton* m_cmdExport;
    QPushButton* m_cmdAbbruch;
    StatusLabel* m_sta;
    ProgressStrip* m_prg;
    ChangeGuard* m_guard;
    std::unique_ptr<WindowBusy> m_busy;
};

} // namespace kalmo::ui
