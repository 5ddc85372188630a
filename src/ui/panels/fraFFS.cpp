#include "ui/panels/fraFFS.h"

#include "app/FileAssociations.h"
#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "app/SettingsKeys.h"
#include "app/Version.h"
#include "obex/FolderRows.h"
#include "ui/controls/Named.h"
#include "ui/controls/ucFfsMem.h"
#include "ui/forms/frmMmc_View.h"
#include "ui/forms/UploadDialog.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FfsUpload.h"

#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

constexpr int commandIcon = 16; // smaller than those of the window's own toolbar

const QString lastUpload = u"UploadToPhone"_s; // use of the folder that files are sent from

QList<toolkit::ListColumn> columns()
{
    using toolkit::SortBy;
    return {{u"Name"_s, SortBy::Tag}, {u"Typ"_s}, {u"Größe"_s, SortBy::Tag, true}, {u"Attribut"_s}};
}

/// What follows the four characters that say what a row is.
QString nameIn(const QString& key)
{
    return key.mid(obex::fileKeyPrefix.size());
}

QString savedFolder(const app::Settings& settings)
{
    const QString folder = app::get(settings, app::keys::LastSaveFolder);
    return folder == app::noValue() ? QString() : folder;
}

} // namespace

fraFFS::fraFFS(Program& program, std::shared_ptr<obex::clsMmc> mmc, toolkit::Progress progress,
               QWidget* parent)
    : PanelFrame(u"fraFFS"_s, parent), m_program(program), m_mmc(std::move(mmc)), m_progress(progress),
      m_rows(u"lvwFFs"_s, columns()), m_lvwFFs(new RowsView(this)), m_search(new SearchLine(*m_lvwFFs, this)),
      m_txtFFscDirAct(named(new QLineEdit, u"txtFFscDirAct"_s, u"Ordner im Telefon"_s)),
      m_ucFfsMem(named(new ucFfsMem(program.context), u"ucFfsMem"_s, u"Speicher im Telefon"_s)),
      m_chooseUpload(
          [this](const UploadQuestion& question) { return chooseUpload(m_program, question, window()); }),
      m_mnuFFSsave(makeSaveMenu()), m_tlbFFS(makeToolbar())
{
    setCaption(u"Dateisystem"_s);
    m_lvwFFs->setRows(m_rows);
    m_lvwFFs->setAccessibleName(u"Dateien im Telefon"_s);
    m_lvwFFs->setIconSource([](const QString& key) { return icon(key); });
    m_lvwFFs->setColumnCharacters({36, 22, 12, 12});
    content()->addWidget(m_tlbFFS);
    content()->addWidget(makePathRow());
    content()->addWidget(m_search);
    content()->addWidget(m_lvwFFs, 1);
    content()->addWidget(m_ucFfsMem);
    setTabOrder(m_tlbFFS->widgetForAction(m_tlbFFS->actions().last()), m_txtFFscDirAct);
    auto* search = m_search->findChild<QLineEdit*>();
    setTabOrder(m_txtFFscDirAct, search);
    setTabOrder(search, m_lvwFFs);
    makeCommands();
    connect(m_lvwFFs, &RowsView::rowDoubleClicked, this, &fraFFS::openRow);
    connect(m_mmc.get(), &obex::clsMmc::DirChange, m_txtFFscDirAct, &QLineEdit::setText);
}

fraFFS::~fraFFS() = default;

QWidget* fraFFS::makePathRow()
{
    m_txtFFscDirAct->setReadOnly(true);
    auto* label = named(new QLabel(u"P&fad Gigaset"_s), u"lbltxtFFscDirActPre"_s);
    label->setBuddy(m_txtFFscDirAct);
    auto* row = new QWidget;
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins({});
    layout->addWidget(label);
    layout->addWidget(m_txtFFscDirAct, 1);
    return row;
}

QToolBar* fraFFS::makeToolbar()
{
    struct ToolButton
    {
        QString key;
        QString caption;
        QString toolTip;
        QKeySequence shortcut;
        void (fraFFS::*run)();
    };
    const ToolButton buttons[] = {
        {u"open"_s, u"PC -> Tel"_s, u"Datei / Ordner zum Telefon senden"_s, {}, &fraFFS::upload},
        {u"save"_s, u"PC <- Tel"_s, u"Datei / Ordner vom Telefon empfangen"_s, {}, &fraFFS::showSaveMenu},
        {u"del"_s, u"Löschen"_s, u"Datei oder Ordner löschen"_s, QKeySequence::Delete,
         &fraFFS::deleteSelected},
        {u"show"_s, u"Öffnen"_s, u"Datei öffnen"_s, {}, &fraFFS::openSelected},
        {u"refresh"_s, u"Neu laden"_s, u"Verzeichnis neu einlesen"_s, QKeySequence::Refresh,
         &fraFFS::refresh},
    };
    auto* bar = named(new QToolBar, u"tlbFFS"_s, u"Dateisystem"_s);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setIconSize(QSize(commandIcon, commandIcon));
    for (const ToolButton& button : buttons) {
        QAction* action = bar->addAction(icon(u"ffs-"_s + button.key), button.caption);
        action->setObjectName(button.key);
        action->setToolTip(button.toolTip);
        action->setShortcut(button.shortcut);
        // Deleting needs the focus in the list; reading anew does not.
        action->setShortcutContext(
            button.shortcut == QKeySequence(QKeySequence::Refresh) ? Qt::WindowShortcut : Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, button.run);
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
    return bar;
}

QMenu* fraFFS::makeSaveMenu()
{
    auto* menu = named(new QMenu(this), u"mnuFFSsave"_s, u"Speichern"_s);
    m_saveIntoLast = menu->addAction(QString());
    connect(m_saveIntoLast, &QAction::triggered, this,
            [this] { saveInto(savedFolder(m_program.context.settings)); });
    QAction* other = menu->addAction(u"Anderem Ordner"_s);
    connect(other, &QAction::triggered, this, &fraFFS::pickFolderAndSave);
    menu->addSeparator();
    menu->addAction(u"&abbrechen"_s);
    return menu;
}

void fraFFS::FFSMemAct()
{
    qint32 bytes = 0;
    if (readFreeBytes() && m_mmc->GetSpaceTotal(bytes, m_progress))
        m_ucFfsMem->setMeTotal(bytes);
}

/// False if the phone doesn't say.
bool fraFFS::readFreeBytes()
{
    qint32 bytes = 0;
    const bool isKnown = m_mmc->GetSpaceFree(bytes, m_progress);
    m_freeBytes = isKnown ? std::optional<qint64>(bytes) : std::nullopt;
    if (isKnown)
        m_ucFfsMem->setMeFree(bytes);
    return isKnown;
}

void fraFFS::FfsListRefresh()
{
    m_listed.reset();
    if (m_mmc->IsOnline() == obex::clsMmc::Connected && m_mmc->DirAct().isEmpty()) {
        obex::DirInLvw({}, m_rows);
        m_progress.status(u"Der aktuelle Ordner im Telefon ist nicht bekannt."_s);
        return;
    }
    QList<obex::tObxDirEntry> entries;
    if (m_mmc->Dir(entries, m_progress, &m_rows))
        m_listed = obex::PhonePath(m_mmc->DirAct());
}

/// False, and says so, if the list shows no folder that something could be done in.
bool fraFFS::isFolderListed()
{
    if (!m_listed)
        m_mmc->ErrMsg(obex::FolderUnknown);
    return m_listed.has_value();
}

void fraFFS::refresh()
{
    FFSMemAct();
    FfsListRefresh();
}

void fraFFS::openSelected()
{
    const QList<int> selected = m_rows.selectedRows();
    if (!selected.isEmpty())
        openRow(selected.contains(m_rows.current()) ? m_rows.current() : selected.first());
}

void fraFFS::openRow(int row)
{
    openKey(m_rows.row(row).key);
}

void fraFFS::openKey(const QString& key)
{
    if (key.startsWith(obex::fileKeyPrefix)) {
        openFile(nameIn(key));
        return;
    }
    m_search->clear();
    changeFolder(key);
    FfsListRefresh(); // after a failure too: the client is where it came to
    m_rows.setCurrent(0);
    m_lvwFFs->setFocus();
}

bool fraFFS::changeFolder(const QString& key)
{
    if (key.startsWith(obex::rootKeyPrefix))
        return m_mmc->CdRoot();
    if (key.startsWith(obex::upKeyPrefix))
        return m_mmc->CdUp();
    return m_mmc->Cd(nameIn(key), false);
}

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
    const QString folder = context.sy.Paths.Storage + u"/config/temp"_s;
    if (!app::EnsureDirExists(context, folder))
        return;
    const QString path = folder + u'/' + localName;
    app::DeleteQuiet(path);
    QByteArray content;
    app::Desktop& desktop = m_program.desktop;
    if (!isFolderListed())
        return;
    {
        operations::FileAccess access(m_mmc, u"Öffnen"_s, m_progress);
        if (!access.mayBegin() || !access.enter(*m_listed) ||
            !access.client().GetFile(name, content, access.progress(), path))
            return;
    }
    if (frmMmc_View::IsSupported(name)) {
        frmMmc_View view(m_program, window());
        if (view.Form_Present(path, name))
            view.exec();
        return;
    }
    if ((desktop.hasAssociation(path) && desktop.open(path)) ||
        app::NoAssociationDialog(context, desktop, path,
                                 app::productName() + u" - fehlende Dateiassoziation"_s))
        return;
    frmMmc_View view(m_program, window());
    view.presentUnknown(path, name);
    view.exec();
}

void fraFFS::upload()
{
    app::Context& context = m_program.context;
    if (!isFolderListed())
        return;
    const int phoneType = context.sy.PhoneType;
    const media::UploadKind kind = media::uploadKind(m_mmc->DirAct(), phoneType);
    if (kind == media::UploadKind::None) {
        context.dialogs.Show(media::messageFor({media::Fault::NoFolder}));
        return;
    }
    if (!m_freeBytes)
        readFreeBytes();
    const auto choice = m_chooseUpload({.kind = kind,
                                        .phoneType = phoneType,
                                        .freeBytes = m_freeBytes,
                                        .folder = app::GetLastInitDir(context, lastUpload)});
    if (!choice)
        return;
    app::SetLastInitDir(context, lastUpload, choice->paths.first());
    convertAndUpload(m_program, m_mmc, m_progress, *m_listed, *choice, m_freeBytes);
    refresh();
}

void fraFFS::showSaveMenu()
{
    QString folder = savedFolder(m_program.context.settings);
    m_saveIntoLast->setEnabled(!folder.isEmpty());
    m_saveIntoLast->setText(u"Speichern in "_s + folder.replace(u'&', u"&&"_s));
    const QWidget* button = m_tlbFFS->widgetForAction(m_tlbFFS->findChild<QAction*>(u"save"_s));
    m_mnuFFSsave->popup(button->mapToGlobal(QPoint(0, button->height())));
}

void fraFFS::pickFolderAndSave()
{
    app::Context& context = m_program.context;
    const QString folder =
        context.dialogs.PickFolder(u"Zielordner für Download auswählen"_s, savedFolder(context.settings));
    if (folder.isEmpty())
        return;
    app::put(context.settings, app::keys::LastSaveFolder, folder);
    saveInto(folder);
}

void fraFFS::saveInto(const QString& folder)
{
    const QStringList names = selectedNames(true);
    if (!names.isEmpty() && isFolderListed())
        downloadFiles(m_mmc, m_progress, *m_listed, names, QDir::cleanPath(folder));
}

void fraFFS::deleteSelected()
{
    const QStringList names = selectedNames(false);
    if (names.isEmpty() || !isFolderListed())
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
    if (deleted) {
        refresh();
        return;
    }
    FfsListRefresh();
    FFSMemAct();
}

/// From the first row to the last, without the rows that are commands.
QStringList fraFFS::selectedNames(bool filesOnly) const
{
    QStringList names;
    for (const int row : m_rows.selectedRows()) {
        const QString& key = m_rows.row(row).key;
        if (key.startsWith(obex::fileKeyPrefix) || (!filesOnly && key.startsWith(obex::folderKeyPrefix)))
            names.append(nameIn(key));
    }
    return names;
}

} // namespace kalmo::ui
