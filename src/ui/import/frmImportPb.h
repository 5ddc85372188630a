#pragma once

#include "phonedata/ClassicStore.h"
#include "phonedata/VcardStore.h"
#include "transfer/import/clsWab.h"
#include "transfer/import/Preview.h"
#include "transfer/import/TextSource.h"
#include "ui/forms/ContactCommands.h"
#include "ui/Program.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

class QCheckBox;
class QLabel;
class QMessageBox;
class QPushButton;
class QRadioButton;

namespace kalmo::ui {

class AddressFrame;
class ChangeGuard;
class FilteredView;
class HintList;
class NumberFrame;
class PreviewModel;
class StatusArea;
class TextFrame;

/// The destination of an import: the lists of a classic handset, or the contacts of one with vCards.
struct ImportLists
{
    toolkit::ListRows* lvwTB = nullptr;
    toolkit::ListRows* lvwNE = nullptr;
    std::shared_ptr<phonedata::VcardStore> store = {};
    bool isPhonebookRead = true; ///< false if lvwTB can't tell which entries exist
};

enum class ImportFrom : int { File = 0, AddressBook = 1 };

/// Brings names and numbers of a file or an address book into the phone's lists. The checked rows of
/// the preview go into the lists of a classic handset, or into a phone with vCards at once.
class frmImportPb : public QDialog
{
    Q_OBJECT

public:
    frmImportPb(Program& program, ImportLists lists, ImportFrom source, QWidget* parent = nullptr);
    ~frmImportPb() override;

    /// The list of a classic handset that `optDest` chooses at first; exec() follows.
    void Form_Present(phonedata::Store destination);
    /// The file or address book that is read when the form is shown; the user need not choose it.
    void setGiven(const QString& path) { m_given = path; }
    /// Makes the preview anew from the source and the options.
    void RebuildPreview();

public Q_SLOTS:
    void reject() override;

Q_SIGNALS:
    void entriesAdded(kalmo::phonedata::Store store, int count); ///< the list differs from the phone's now
    void contactsImported(const kalmo::ui::ContactImport& imported);

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Construction
    QWidget* makeHead();
    QWidget* makeDestination();
    QWidget* makeCommands();
    QWidget* makePreviewOptions();
    QWidget* makeButtons();
    void makeView();
    void makeContextMenu();
    void connectControls();
    void guardChoices();
    QCheckBox* makeCheck(const QString& text, const QString& name, bool checked);
    QPushButton* makeButton(const QString& text, const QString& name, void (frmImportPb::*clicked)());

    // Sources
    void openFile(int choice);
    void takeFile(const QString& path);
    transfer::OpenedText openedText(const QString& path) const;
    void takeGiven();
    void takeBook(const QString& path);
    void tellFault(const QString& path, transfer::TextFault fault);
    void activateBook();
    void askForBook(bool isFolder);
    bool readBook(const QString& path);
    void mend(const transfer::ImportHint& hint);

    // Preview
    void refresh();
    void build();
    void beginWork();
    void endWork();
    bool advance(qsizetype done, qsizetype total);
    transfer::ImportSource source() const;
    transfer::ImportOptions options() const;
    transfer::ExistingEntries existing() const;
    bool isCompared() const;
    int hiddenChecked() const;
    bool agreesToHidden();
    void showCounts();
    void sortBy(int column);
    std::vector<size_t> markedRows() const;
    void checkShown(void (*check)(transfer::Preview&));
    void cmdSelAll_Click();
    void cmdSelNon_Click();
    void cmdSelSet_Click();
    void cmdSelUnset_Click();

    // Import
    void cmdImport_Click();
    void ImportToClassicList();
    void ImportToVcardStore();
    ContactImport sendContacts(std::vector<phonedata::tVcfEntry> contacts);
    void noteTaken(int count);
    void askToStop();
    void saveOptions();

    Program& m_program;
    ImportLists m_lists;
    ImportFrom m_from;
    transfer::Shape m_shape;
    transfer::RememberedChoices m_remembered;
    transfer::ImportOptions m_mended; ///< options without a control
    transfer::clsWab m_book;
    QString m_given;
    QString m_bookPath;
    PreviewModel* m_model;
    FilteredView* m_view;
    StatusArea* m_sta;
    TextFrame* m_textFrame = nullptr;
    AddressFrame* m_addressFrame = nullptr;
    NumberFrame* m_numberFrame;
    HintList* m_hints;
    QLabel* m_lblHeader;
    QLabel* m_lblCounts;
    QRadioButton* m_optDest0;
    QRadioButton* m_optDest1;
    QCheckBox* m_chkAutoRefresh;
    QCheckBox* m_chkMark0;
    QCheckBox* m_chkMark1;
    QPushButton* m_cmdImport;
    QPushButton* m_cmdAbbruch;
    ChangeGuard* m_guard;
    QWidget* m_content;
    QPointer<QMessageBox> m_stopBox;
    QElapsedTimer m_building;
    qint64 m_lastYield = 0;
    qsizetype m_lastDone = 0; // of the rows that the preview has made, then compared
    bool m_loading = true;
    bool m_wasShown = false;
    bool m_closeWanted = false;
    bool m_isPausing = false; // ahead of the question for an address book
    bool m_isUnread = false;  ///< the chosen file is there and can't be read
    int m_sortColumn = -1;
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
};

} // namespace kalmo::ui
