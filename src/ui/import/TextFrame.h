#pragma once

#include "transfer/import/TextSource.h"

#include <QGroupBox>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;

namespace kalmo::ui {

/// The choices for a text file, `fraCSV` for a classic list or `fraCsvVcf` for contacts: the file, how it is
/// split, and which column holds what.
class TextFrame : public QGroupBox
{
    Q_OBJECT

public:
    explicit TextFrame(transfer::Shape shape, QWidget* parent = nullptr);

    /// The chosen file, empty while there is none.
    QString path() const { return m_path; }
    /// Shows a file as it was opened; an empty path shows that there is none.
    void showOpened(const QString& path, const transfer::OpenedText& opened);
    /// The file as it was opened last.
    const transfer::OpenedText& opened() const { return m_opened; }
    /// The text around the cells.
    QString filter() const;
    /// The headings that are chosen, empty for none.
    QStringList chosenHeadings() const;
    /// Writes the choices into the options.
    void take(transfer::TextOptions& options) const;

Q_SIGNALS:
    void fileWanted(int choice); ///< a line of the menu `mnuOpen`
    void changed();
    void filterChanged();

private:
    QWidget* makeFileLine();
    QWidget* makeLayoutLine();
    QLayout* makeTime();
    QWidget* makeColumns();
    QMenu* makeMenu();
    void clickFilter(bool checked);

    transfer::Shape m_shape;
    QString m_path;
    transfer::OpenedText m_opened;
    QPushButton* m_cmdCsvOpen;
    QLineEdit* m_txtCsvPath;
    QComboBox* m_cmbCsvSep;
    QCheckBox* m_chkFilter;
    QLineEdit* m_txtFilter;
    QList<QComboBox*> m_columns;
    QComboBox* m_cmbTime = nullptr; // for contacts
};

} // namespace kalmo::ui
