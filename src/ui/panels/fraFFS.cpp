#include "ui/panels/fraFFS.h"

#include "obex/clsMmcOperation.h"
#include "obex/FolderRows.h"
#include "operations/FileAccess.h"
#include "ui/controls/Named.h"
#include "ui/controls/ucFfsMem.h"
#include "ui/forms/UploadDialog.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowPlace.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"
#include "ui/panels/FileDrop.h"
#include "ui/panels/Thumbnails.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int commandIcon = 16; // smaller than those of the window's own toolbar
constexpr int rowPicture = 28;  // large enough to know a picture by it

QList<toolkit::ListColumn> columns()
{
    using toolkit::SortBy;
    return {{u"Name"_s, SortBy::Tag}, {u"Typ"_s}, {u"Größe"_s, SortBy::Tag, true}, {u"Attribut"_s}};
}

/// The name in the key of a row: the part after the four characters for the kind of row.
QString nameIn(const QString& key)
{
    return key.mid(obex::fileKeyPrefix.size());
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
      m_mnuFFSsave(makeSaveMenu()), m_tlbFFS(makeToolbar()), m_thumbnails(new Thumbnails(this))
{
    setCaption(u"Dateisystem"_s);
    m_lvwFFs->setRows(m_rows);
    m_lvwFFs->setAccessibleName(u"Dateien im Telefon"_s);
    m_lvwFFs->setPlaceholder(u"Die Dateien wurden noch nicht gelesen. \"Neu laden\" liest sie."_s);
    m_lvwFFs->setPictureSize(rowPicture);
    m_lvwFFs->setIconSource([this](const toolkit::ListRow& row) {
        const bool isFile = row.key.startsWith(obex::fileKeyPrefix);
        const QIcon thumbnail = isFile ? m_thumbnails->of(nameIn(row.key)) : QIcon();
        return thumbnail.isNull() ? icon(row.icon) : thumbnail;
    });
    connect(m_thumbnails, &Thumbnails::changed, m_lvwFFs->viewport(), qOverload<>(&QWidget::update));
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
    m_lvwFFs->setDragSource([this] { return draggedFiles(); });
    auto* drop = new FileDrop(*m_lvwFFs);
    connect(drop, &FileDrop::dropped, this, &fraFFS::takeDropped);
    connect(drop, &FileDrop::foldersRefused, this, [this] { m_progress.status(noFolders); });
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
        {u"refresh"_s, u"Neu laden"_s, u"Verzeichnis neu einlesen"_s, Qt::Key_F5, &fraFFS::refresh},
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
        action->setShortcutContext(button.shortcut == QKeySequence(Qt::Key_F5) ? Qt::WindowShortcut
                                                                               : Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, button.run);
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
    return bar;
}

QMenu* fraFFS::makeSaveMenu()
{
    auto* menu = named(new QMenu(this), u"mnuFFSsave"_s, u"Speichern"_s);
    m_saveIntoLast = menu->addAction(u"Speichern"_s);
    connect(m_saveIntoLast, &QAction::triggered, this, [this] { saveInto(savedFolder()); });
    QAction* other = menu->addAction(u"Anderem Ordner"_s);
    connect(other, &QAction::triggered, this, &fraFFS::pickFolderAndSave);
    menu->addSeparator();
    menu->addAction(u"&abbrechen"_s);
    return menu;
}

void fraFFS::FFSMemAct()
{
    const obex::clsMmc::Busy busy(*m_mmc); // one of the two requests does not raise it
    qint32 bytes = 0;
    if (readFreeBytes() && !m_progress.cancelled() && m_mmc->GetSpaceTotal(bytes, m_progress))
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

/// Says in the list and in the status bar what is the matter with the list.
void fraFFS::tellState(const QString& text)
{
    m_lvwFFs->setNote(text);
    m_progress.status(text);
}

/// A reading that the user stops leaves the list as it was, if it shows that folder.
void fraFFS::FfsListRefresh()
{
    const obex::clsMmc::Busy busy(*m_mmc); // the user may have stopped the operation around it
    const auto shown = std::exchange(m_listed, std::nullopt);
    if (m_mmc->IsOnline() == obex::clsMmc::Connected && m_mmc->DirAct().isEmpty()) {
        obex::DirInLvw({}, m_rows);
        tellState(u"Der aktuelle Ordner im Telefon ist nicht bekannt. \"Basisverzeichnis\" führt zurück."_s);
        return;
    }
    const bool isOther = shown != obex::PhonePath(m_mmc->DirAct());
    const QString note = m_lvwFFs->note();
    if (isOther)
        m_rows.clear();
    m_lvwFFs->setNote(u"Der Ordner wird gelesen..."_s);
    QList<obex::tObxDirEntry> entries;
    const bool isRead = !m_progress.cancelled() && m_mmc->Dir(entries, m_progress);
    if (!isRead && m_progress.cancelled() && !isOther) {
        m_lvwFFs->setNote(note);
        m_progress.status(u"Das Lesen des Ordners wurde abgebrochen. Die Liste ist, wie sie war."_s);
        m_listed = shown;
        return;
    }
    RowPlace place(m_rows);
    obex::DirInLvw(entries, m_rows); // after a failure the ways out alone
    if (!isOther)
        place.restore();
    if (!isRead) {
        tellState(m_progress.cancelled()
                      ? u"Das Lesen des Ordners wurde abgebrochen. \"Neu laden\" liest ihn."_s
                      : u"Der Ordner konnte nicht gelesen werden. \"Neu laden\" liest ihn."_s);
        return;
    }
    m_lvwFFs->setNote({});
    if (entries.isEmpty())
        tellState(u"Der Ordner ist leer."_s);
    m_listed = obex::PhonePath(m_mmc->DirAct());
    m_thumbnails->show(*m_listed, entries);
}

void fraFFS::comeBack()
{
    const obex::clsMmc::Busy busy(*m_mmc);
    if (m_listed && !m_progress.cancelled() &&
        !operations::FileAccess(m_mmc, u"comeBack"_s, m_progress).enter(*m_listed))
        m_search->clear(); // it was typed for that folder
    FfsListRefresh();
}

void fraFFS::forget()
{
    m_rows.clear();
    m_lvwFFs->setNote({});
    m_listed.reset();
    m_freeBytes.reset();
    m_ucFfsMem->forget();
    m_txtFFscDirAct->clear();
    m_thumbnails->forget();
}

/// Returns true if the list shows a folder that something can be done in, and the phone is connected. Informs
/// the user if not.
bool fraFFS::requireFolder()
{
    if (!m_listed)
        m_mmc->ErrMsg(obex::FolderUnknown);
    else if (m_mmc->IsOnline() != obex::clsMmc::Connected)
        m_mmc->ErrMsg(obex::Timeout);
    else
        return true;
    return false;
}

/// Returns true if the phone answers. If it stays silent, which has been reported, the list stays as it was
/// read.
bool fraFFS::reachesPhone()
{
    operations::FileAccess access(m_mmc, u"ReachesPhone"_s, m_progress);
    return access.canSend();
}

/// Connects again where that is lost, after a long silence of the phone.
void fraFFS::refresh()
{
    const obex::clsMmc::Busy busy(*m_mmc); // one operation, which the user stops as a whole
    if (m_mmc->IsOnline() != obex::clsMmc::Connected && !m_mmc->Online(m_progress))
        return;
    FFSMemAct();
    FfsListRefresh();
}

void fraFFS::openSelected()
{
    const QList<int> selected = m_rows.selectedRows();
    if (selected.isEmpty())
        m_progress.status(nothingSelected);
    else
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
    {
        const obex::clsMmc::Busy busy(*m_mmc);
        if (!changeFolder(key) && !reachesPhone())
            return;
        FfsListRefresh(); // after a refusal too: the client is where it came to
    }
    m_rows.setCurrent(0);
    m_lvwFFs->setFocus();
}

bool fraFFS::changeFolder(const QString& key)
{
    if (key.startsWith(obex::rootKeyPrefix))
        return m_mmc->CdRoot();
    const bool goesUp = key.startsWith(obex::upKeyPrefix);
    if (m_mmc->DirAct().isEmpty() && m_listed) { // the phone fell silent on the way to another folder
        operations::FileAccess access(m_mmc, u"Cd"_s, m_progress);
        return access.mayBegin() && access.enter(goesUp ? m_listed->folder() : m_listed->below(nameIn(key)));
    }
    return goesUp ? m_mmc->CdUp() : m_mmc->Cd(nameIn(key), false);
}

QStringList fraFFS::namesToChange() const
{
    const QStringList names = selectedNames(false);
    if (names.isEmpty())
        m_progress.status(nothingSelected);
    return names;
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
