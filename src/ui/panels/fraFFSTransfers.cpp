// The file system panel's transfers: opening, sending, receiving and deleting files.

#include "app/FileAssociations.h"
#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "app/SettingsKeys.h"
#include "app/StoragePaths.h"
#include "app/Version.h"
#include "obex/FolderRows.h"
#include "operations/FetchFiles.h"
#include "ui/forms/frmMmc_View.h"
#include "ui/lists/RowsView.h"
#include "ui/panels/DraggedFiles.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FfsUpload.h"
#include "ui/panels/FileBoxes.h"
#include "ui/panels/fraFFS.h"
#include "ui/panels/Thumbnails.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QPointer>
#include <QToolBar>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using operations::FileObstacle;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {
const QString lastUpload = u"UploadToPhone"_s; // use of the folder that files are sent from

/// Reads a file of the folder that the panel shows into a local one. Returns false if that fails, or if not
/// all of it came and the user does not want it then.
bool fetchToOpen(operations::FileAccess& access, const obex::PhonePath& file, const QString& path)
{
    obex::clsMmc& client = access.client();
    std::vector<operations::FileToFetch> found{{.path = file}};
    operations::findFiles(access, found);
    const auto& [place, obstacle, entry] = found.front();
    if (!entry && obstacle != FileObstacle::FolderNotListed)
        client.ErrMsg(obex::NotFound);
    if (!entry)
        return false;
    const operations::FetchedFile fetched = operations::fetchFile(access, found.front());
    return fetched.outcome.isConfirmed &&
           (fetched.isWhole ||
            askToTakePart(client, {entry->name, entry->size, fetched.bytes.size()}, u"geöffnet"_s)) &&
           client.SaveFile(fetched.bytes, path, entry->modified);
}

} // namespace

/// Shows a file in the preview or with the user's own program, from a copy in the work folder.
void fraFFS::openFile(const QString& name)
{
    app::Context& context = m_program.context;
    const QString localName = app::safeLocalName(name);
    if (localName.isEmpty()) {
        context.dialogs.Show({.text = u"Dateien können auf diesem Computer nicht so heißen:\n"_s + name,
                              .icon = Icon::Exclamation});
        return;
    }
    const QString folder = app::workPath(context.sy);
    if (!requireFolder() || !app::EnsureDirExists(context, folder))
        return;
    const QString path = folder + u'/' + localName;
    app::DeleteQuiet(path);
    app::Desktop& desktop = m_program.desktop;
    const obex::PhonePath file = m_listed->below(name);
    frmMmc_View view(m_program, window());
    const bool isSupported = frmMmc_View::IsSupported(name);
    {
        // The window is blocked until a large picture is there to be shown.
        operations::FileAccess access(m_mmc, u"Öffnen"_s, m_progress);
        if (!access.mayBegin() || !fetchToOpen(access, file, path))
            return;
        m_thumbnails->note(file, QFileInfo(path).size(), path);
        if (isSupported && !view.Form_Present(path, name))
            return;
    }
    if (isSupported) {
        view.exec();
        return;
    }
    if ((desktop.hasAssociation(path) && desktop.open(path)) ||
        app::NoAssociationDialog(context, desktop, path,
                                 app::productName() + u" - fehlende Dateiassoziation"_s))
        return;
    view.presentUnknown(path, name);
    view.exec();
}

void fraFFS::upload()
{
    if (requireFolder())
        send(*m_listed, {});
}

void fraFFS::takeDropped(const QStringList& paths, const QString& key, qsizetype passedOver)
{
    if (requireFolder())
        send(key.isEmpty() ? *m_listed : m_listed->below(key.mid(obex::folderKeyPrefix.size())),
             {paths, passedOver});
}

/// Sends files into a folder of the phone: those that were given, or those that the user chooses.
void fraFFS::send(const obex::PhonePath& to, const Dropped& given)
{
    app::Context& context = m_program.context;
    const int phoneType = context.sy.PhoneType;
    const media::UploadKind kind = media::uploadKind(to.forEngine(), phoneType);
    if (kind == media::UploadKind::None) {
        context.dialogs.Show(media::messageFor({media::Fault::NoFolder}));
        return;
    }
    if (!m_freeBytes && !operations::isOnCard(to))
        readFreeBytes();
    const std::optional<qint64> freeBytes =
        operations::isOnCard(to) ? operations::FileAccess(m_mmc, u"Upload"_s, m_progress).askForRoom(to)
                                 : m_freeBytes;
    auto choice = m_chooseUpload({.kind = kind,
                                  .phoneType = phoneType,
                                  .freeBytes = freeBytes,
                                  .folder = app::GetLastInitDir(context, lastUpload),
                                  .given = given.paths});
    if (!choice)
        return;
    choice->passedOver = given.passedOver;
    app::SetLastInitDir(context, lastUpload, choice->paths.first());
    convertAndUpload(m_program, m_mmc, m_progress, to, *choice, freeBytes,
                     [this](const operations::PlannedFile& file) {
                         m_thumbnails->note(file.path, file.size, file.file.localPath);
                     });
    if (given.passedOver > 0 && m_progress.panel)
        m_progress.status(m_progress.panel->Text() + u' ' + noFolders);
    refreshAfterWork([&] {
        if (m_listed && to != *m_listed)
            operations::FileAccess(m_mmc, u"Upload"_s, m_progress).enter(*m_listed);
        refresh();
    });
}

/// A drag of the selected files to another program.
std::unique_ptr<QMimeData> fraFFS::draggedFiles()
{
    const QStringList names = selectedNames(true);
    if (names.isEmpty() || !m_listed)
        return nullptr;
    auto files = std::make_unique<DraggedFiles>([panel = QPointer(this), from = *m_listed, names] {
        return panel ? panel->fetchForDrop(from, names) : QStringList();
    });
    connect(m_lvwFFs, &RowsView::dragDropped, files.get(), &DraggedFiles::setDropped);
    return files;
}

/// Fetches files into a folder of their own, from which another program takes them.
QStringList fraFFS::fetchForDrop(const obex::PhonePath& from, const QStringList& names)
{
    if (!m_dragFolder)
        m_dragFolder = std::make_unique<app::WorkFolder>(m_program.context);
    const QDir folder(m_dragFolder->filePath(QString::number(++m_drags)));
    if (!m_dragFolder->isValid() || !folder.mkpath(u"."_s)) {
        m_program.context.dialogs.Show(media::messageFor({media::Fault::NotWritten, folder.path()}));
        return {};
    }
    QStringList paths;
    downloadFiles(m_mmc, m_progress, from, names, {.path = folder.path(), .isScratch = true},
                  [&](const obex::PhonePath& path, qint64 bytes, const QString& localPath) {
                      m_thumbnails->note(path, bytes, localPath);
                      paths.append(localPath);
                  });
    return paths;
}

/// Returns true if a file is selected. Says in the status bar why there is nothing to save if not.
bool fraFFS::requireFile()
{
    if (!selectedNames(true).isEmpty())
        return true;
    m_progress.status(selectedNames(false).isEmpty()
                          ? nothingSelected
                          : u"Ordner werden nicht gespeichert. Markieren Sie die Dateien darin."_s);
    return false;
}

void fraFFS::showSaveMenu()
{
    if (!requireFile())
        return;
    QString folder = savedFolder();
    m_saveIntoLast->setEnabled(!folder.isEmpty());
    m_saveIntoLast->setText(u"Speichern in "_s + folder.replace(u'&', u"&&"_s));
    const QWidget* button = m_tlbFFS->widgetForAction(m_tlbFFS->findChild<QAction*>(u"save"_s));
    m_mnuFFSsave->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void fraFFS::pickFolderAndSave()
{
    app::Context& context = m_program.context;
    const QString folder = context.dialogs.PickFolder(u"Zielordner für Download auswählen"_s, savedFolder());
    if (folder.isEmpty())
        return;
    app::put(context.settings, app::keys::LastSaveFolder, folder);
    saveInto(folder);
}

void fraFFS::saveInto(const QString& folder)
{
    const QStringList names = selectedNames(true);
    if (!requireFile() || !requireFolder())
        return;
    downloadFiles(m_mmc, m_progress, *m_listed, names, {.path = QDir::cleanPath(folder)},
                  [this](const obex::PhonePath& path, qint64 bytes, const QString& localPath) {
                      m_thumbnails->note(path, bytes, localPath);
                  });
}

void fraFFS::deleteSelected()
{
    const QStringList names = namesToChange();
    if (names.isEmpty() || !requireFolder())
        return;
    const Answer answer = m_program.context.dialogs.Show(
        {.text = QString::number(names.size()) + u" ausgewählte Dateien wirklich löschen?"_s,
         .buttons = Buttons::YesNo,
         .icon = Icon::Question,
         .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        return;
    const bool deleted =
        deleteEntries(m_mmc, m_progress, *m_listed, QStringList(names.rbegin(), names.rend()));
    refreshAfterWork([&] {
        if (deleted) {
            refresh();
            return;
        }
        FfsListRefresh();
        FFSMemAct();
    });
}

/// Shows what the phone holds after a change. The sentence that says what was done stays. A phone that has
/// become silent is not asked again, so that there is one box.
void fraFFS::refreshAfterWork(const std::function<void()>& work)
{
    const QString sentence = m_progress.panel ? m_progress.panel->Text() : QString();
    if (reachesPhone())
        work();
    m_progress.status(sentence);
}

QString fraFFS::savedFolder() const
{
    const QString folder = app::get(m_program.context.settings, app::keys::LastSaveFolder);
    return folder == app::noValue() ? QString() : folder;
}

} // namespace kalmo::ui
