#pragma once

#include "app/WorkFolder.h"
#include "obex/clsMmc.h"
#include "obex/PhonePath.h"
#include "toolkit/ListRows.h"
#include "ui/forms/frmMmcOpenControls.h"
#include "ui/panels/PanelFrame.h"
#include "ui/Program.h"

#include <optional>

class QAction;
class QLineEdit;
class QMenu;
class QMimeData;
class QToolBar;

namespace kalmo::ui {

class RowsView;
class SearchLine;
class Thumbnails;
class ucFfsMem;

/// For dropped folders.
inline const QString nothingSelected = QStringLiteral("Im Ordner ist nichts markiert.");
inline const QString noFolders = QStringLiteral("Ordner werden nicht gesendet.");

/// The panel "Dateisystem": a small file manager for the phone. Whoever shows it opens and closes the data
/// channel.
class fraFFS : public PanelFrame
{
    Q_OBJECT

public:
    /// `progress` outlives the panel.
    fraFFS(Program& program, std::shared_ptr<obex::clsMmc> mmc, toolkit::Progress progress,
           QWidget* parent = nullptr);
    ~fraFFS() override;

    /// Reads the phone's capacities and shows them.
    void FFSMemAct();
    /// Lists the phone's current folder. Where the client does not know it, only the ways out stay in the
    /// list.
    void FfsListRefresh();

    /// Lists the folder that the list still shows, with the same rows selected: the channel was closed
    /// meanwhile, and a new connection begins in the root.
    void comeBack();

    /// Drops what was read from the phone: another one may be connected.
    void forget();

    /// Asks the user for files in place of the file dialog.
    using UploadChooser = std::function<std::optional<UploadChoice>(const UploadQuestion& question)>;
    void setUploadChooser(UploadChooser chooser) { m_chooseUpload = std::move(chooser); }

    toolkit::ListRows& lvwFFs() { return m_rows; }
    RowsView& view() const { return *m_lvwFFs; }
    /// For the menus. The keys work while the list has the focus.
    QList<QAction*> commands() const { return m_commands; }

private:
    QWidget* makePathRow();
    QToolBar* makeToolbar();
    QMenu* makeSaveMenu();
    void makeCommands();
    QAction* gap();

    void refresh();
    void refreshAfterWork(const std::function<void()>& work);
    QString savedFolder() const;
    void openSelected();
    void openRow(int row);
    void openKey(const QString& key);
    void goUp();
    void renameSelected();
    void makeFolder();
    void showAgain(const QString& key);
    bool changeFolder(const QString& key);
    bool requireFolder();
    bool reachesPhone();
    void tellState(const QString& text);
    bool readFreeBytes();
    void openFile(const QString& name);
    void upload();
    /// Files from elsewhere, and the number of things beside them that can't be sent.
    struct Dropped
    {
        QStringList paths = {};
        qsizetype passedOver = 0;
    };
    void takeDropped(const QStringList& paths, const QString& key, qsizetype passedOver);
    void send(const obex::PhonePath& to, const Dropped& given);
    std::unique_ptr<QMimeData> draggedFiles();
    QStringList fetchForDrop(const obex::PhonePath& from, const QStringList& names);
    bool requireFile();
    void showSaveMenu();
    void saveInto(const QString& folder);
    void pickFolderAndSave();
    void deleteSelected();
    QStringList selectedNames(bool filesOnly) const;
    /// Of files and folders. Says so if there is none.
    QStringList namesToChange() const;
    bool mayChangeEnding(const QString& ending, const QString& wanted);

    Program& m_program;
    std::shared_ptr<obex::clsMmc> m_mmc;
    toolkit::Progress m_progress;
    toolkit::ListRows m_rows;
    RowsView* m_lvwFFs;
    SearchLine* m_search;
    QLineEdit* m_txtFFscDirAct;
    ucFfsMem* m_ucFfsMem;
    std::optional<qint64> m_freeBytes;       // as the phone said last
    std::optional<obex::PhonePath> m_listed; // the folder whose content is in the list
    UploadChooser m_chooseUpload;
    QAction* m_saveIntoLast = nullptr; // before the menu: making the menu sets it
    QMenu* m_mnuFFSsave;
    QToolBar* m_tlbFFS;
    Thumbnails* m_thumbnails;
    std::unique_ptr<app::WorkFolder> m_dragFolder; // for what is dragged out
    int m_drags = 0;
    QList<QAction*> m_commands;
};

} // namespace kalmo::ui
