#pragma once

#include "obex/clsMmc.h"
#include "operations/RecordFile.h"
#include "ui/Program.h"
#include "ui/window/ClassicList.h"
#include "ui/window/SectionGuard.h"
#include "ui/window/VcardList.h"

#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QSet>

#include <optional>

class QMenu;
class QMessageBox;
class QSplitter;
class QToolBar;

namespace kalmo::ui {

class fraAd;
class fraDIV;
class fraFFS;
class fraSounds;
enum class ImportFrom : int;
class ListPanel;
class NaviTree;
class PanelStack;
class Reminders;
class RowsView;
class StatusArea;

/// The main window: the navigation on the left, one section's panel on the right, the commands above and the
/// status bar below. It opens on the sponsors, and talks to the phone as the user goes from section to
/// section. While it does, everything but the cancel button is blocked, and closing waits for the end.
///
/// It outlives its operations, and so does everything that it owns: panels, lists, dialogs, the client.
/// StartFlow alone destroys it, and only while nothing runs. So after an operation, a wait or a box nobody
/// checks that the window is still there. The destructors of the window and of WindowBusy assert it.
class frmPB : public QMainWindow
{
    Q_OBJECT

public:
    frmPB(Program& program, std::shared_ptr<obex::clsMmc> mmc, QWidget* parent = nullptr);
    ~frmPB() override;

    void DisplayRefresh(); ///< the section "Diverses"
    void FFSMemAct();
    void FfsListRefresh();

    /// Enters the section of a node, after the necessary questions. Call it for the node that is selected in
    /// the tree.
    void tvwNavi_NodeClick(const QString& key);
    /// Selects a node and enters its section.
    void goTo(const QString& key);
    /// Opens a backup or an address book from outside: in its list, or as an import where the phone has no
    /// such list. The user sees each step before it changes anything. Waits for the end of an operation or a
    /// dialog, and until the window is shown.
    void openGiven(const QString& path);

    /// Says in the status bar that the phone is an emulated one.
    void showEmulated(bool isEmulated);
    /// A search has found a phone of the same model again. Nothing of the phone before it stays, and what is
    /// in front is read again when the window is shown next. Lists that wait to be written stay.
    void forgetPhone();
    /// A search begins: the data of the phone so far are not shown any more.
    void forgetDevice();

    /// Asks about each list that waits to be written; `text` makes the question for one. Returns true if they
    /// may be lost.
    bool mayLoseChanges(const std::function<QString(phonedata::Store)>& text);
    /// The question before the program ends.
    static QString closingText(phonedata::Store store);
    /// Writes lists that wait to be written into files in the folder for backups, and names them. Returns
    /// false if one could not be saved, after it has informed the user.
    bool saveUnwritten();
    /// Does the same without a box; the log has the failures. The next start names the files.
    void keepUnwritten();
    /// Ends without a question, as with the desktop's session: after keepUnwritten(), and after a running
    /// operation, which stops as soon as that loses nothing.
    void endUnasked();
    /// Takes the phone back to AT commands if it is in its data mode. Returns false if it stays there, after
    /// it has informed the user. If the phone does not end its connection the next call closes only the
    /// channel.
    bool closeChannel();

    /// Part of the described interface: the section that guards go by, and the list that commands act on.
    int ActiveSection() const { return m_guard.ActiveSection; }
    int ToolbarMode() const { return m_toolbarMode; }

Q_SIGNALS:
    void shown();
    void settingsRequested(); ///< the window has hidden itself
    void searchRequested();   ///< the window has hidden itself
    void closedByUser();      ///< nothing is open any more; the program may end

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // Construction
    void makeToolbar();
    void makeMenuBar();
    void makeEditMenu();
    void makeContextMenu(RowsView& view);
    void makeContextMenu(fraFFS& panel);
    void readAgain(const QSet<operations::RecordedList>& changed);
    QList<RowsView*> rememberedLists() const;
    void makeMenus();
    QMenu* makePopup(const PopupMenu& table, const std::function<void(int choice)>& choose);
    void makePanels();
    void makeClassicPanels();
    QList<ListPanel*> listPanels() const;
    RowsView* listInFront() const;
    void offerEditing();
    void restoreLayouts();
    void saveLayouts();
    void countRows(ListPanel& panel, const QString& name);
    ListPanel* makeListPanel(const QString& name, const QString& caption, toolkit::ListRows& rows,
                             bool plainASelects);
    void layOut();
    void connectMmc();
    void giveCommands();

    // Navigation
    bool leaveFiles();
    bool regainLine();
    bool passesGuard(const QString& key);
    void SelectPreviousNode();
    void enterSection(const QString& key);
    void enterPhonebook(const QString& key);
    void enterProviders(const QString& key);
    void readShownList();
    void enterDiverse(const QString& key);
    void enterSounds(const QString& key);
    void enterPanel(const QString& key, QWidget* panel, int mode, int section);
    void enterSponsor(const QString& key);
    void enterFiles(const QString& key);
    void openFiles(void (fraFFS::*list)());
    void returnToFiles();
    void enterSettings(const QString& key);
    void enterAreaCodes(const QString& key);
    void wantSearch();
    void showBluetoothHelp(const QString& key);
    void setMode(int mode, int section);
    void showPanel(QWidget* panel, const QString& node);
    void selectShownNode();
    bool isFilesInFront() const;
    bool isInDataMode() const;
    void remindOfChannel();
    void firstShown();

    // Commands
    void press(Command command);
    void popUp(Command command);
    void showFormerStates();
    operations::RecordedList recordedListInFront() const;

    // Import and files from outside
    void openNextGiven();
    void openFile(const QString& path);
    bool enterList(phonedata::Store store);
    bool isListRead(phonedata::Store store) const;
    bool mayImportUnread(phonedata::Store store);
    void readAheadOfImport(phonedata::Store store);
    void openImport(ImportFrom source);
    void presentImport(ImportFrom source, phonedata::Store store, const QString& given);

    // Closing
    bool isWriting() const;
    bool isDirtyListInFront() const;
    void askToInterrupt();
    void stopForClosing();
    void closeIfWanted();
    void cleanUp();
    struct SavedLists
    {
        QStringList paths = {};
        QList<toolkit::Message> failures = {};
    };
    SavedLists saveLists() const;
    void tellKept();
    void forgetKept();

    Program& m_program;
    std::shared_ptr<obex::clsMmc> m_mmc;
    StatusArea* m_sta;
    WindowParts m_parts;
    SectionGuard m_guard;
    int m_toolbarMode = ModeSponsor;
    QMap<Command, QAction*> m_actions;
    QList<QAction*> m_editActions;
    QAction* m_formerStates = nullptr;
    QMap<int, CommandTarget*> m_targets; // by ToolbarMode
    QToolBar* m_tlb;
    NaviTree* m_tvwNavi;
    PanelStack* m_panels;
    QMap<const QWidget*, QString> m_nodes; // of the panels, each with the node that it was entered by
    Reminders* m_reminders;
    ClassicList* m_phonebook = nullptr; // of classic handsets
    ClassicList* m_providers = nullptr;
    VcardList* m_contacts = nullptr; // of the others
    ListPanel* m_fraPBTB = nullptr;
    ListPanel* m_fraPBNE = nullptr;
    ListPanel* m_fraVCF = nullptr;
    fraFFS* m_fraFFS = nullptr;
    fraSounds* m_fraSounds = nullptr;
    fraDIV* m_fraDIV = nullptr;
    fraAd* m_fraAd = nullptr;
    QSplitter* m_splitter = nullptr;
    QMenu* m_mnuList = nullptr;
    QAction* m_endOfCommands = nullptr; // of the menu "Liste"
    QMenu* m_mnuOpen = nullptr;
    QMenu* m_mnuImport = nullptr; // for the phonebook
    QMenu* m_mnuImportNE = nullptr;
    bool m_wasShown = false;
    bool m_isStuck = false; ///< during this click the phone could not be brought back to AT commands
    QStringList m_given;    // files that wait for the end of an operation or a dialog
    bool m_opensGiven = false;
    bool m_isClosing = false;
    bool m_isEnding = false;           // without a question
    std::optional<QStringList> m_kept; // files of keepUnwritten(), once it has run
    bool m_closeWanted = false;        // when the running operation has ended
    QPointer<QMessageBox> m_closingBox;
    bool m_isClosed = false;
};

} // namespace kalmo::ui
