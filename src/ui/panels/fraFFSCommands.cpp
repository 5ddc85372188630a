// The file system panel's commands beyond its toolbar: keys and context menu of the list.

#include "obex/FolderRows.h"
#include "ui/icons/Icons.h"
#include "ui/lists/RowsView.h"
#include "ui/lists/SearchLine.h"
#include "ui/panels/FfsFolders.h"
#include "ui/panels/fraFFS.h"

#include <QAbstractButton>
#include <QAction>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct NameRequest
{
    QString title;
    QString label;
    QString accept; ///< of the button that takes the name
    QString name;   ///< that is there now
    qsizetype stem; ///< its length without the ending
};

/// With its dot. Empty if the name has none; a dot at the beginning hides a file.
QString endingOf(const QString& name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? name.mid(dot) : QString();
}

/// Empty if the user gives none, or leaves the name as it is.
QString askForName(QWidget* parent, const NameRequest& request)
{
    QInputDialog dialog(parent);
    dialog.setObjectName(u"dlgName"_s);
    dialog.setWindowTitle(request.title);
    dialog.setLabelText(request.label);
    dialog.setTextValue(request.name);
    dialog.setOkButtonText(request.accept);
    dialog.setCancelButtonText(u"Abbrechen"_s);
    dialog.findChild<QLabel*>()->setTextFormat(Qt::PlainText); // a name from the phone may look like markup
    for (QAbstractButton* button : dialog.findChild<QDialogButtonBox*>()->buttons())
        button->setIcon({}); // the toolkit's own are of another style
    // As file managers do: who types at once keeps the ending.
    auto* field = dialog.findChild<QLineEdit*>();
    const auto selectStem = [field, &request] { field->setSelection(0, static_cast<int>(request.stem)); };
    QMetaObject::invokeMethod(field, selectStem, Qt::QueuedConnection);
    dialog.resize(dialog.fontMetrics().averageCharWidth() * 50, 0);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString name = dialog.textValue().trimmed();
    return name == request.name ? QString() : name;
}

} // namespace

QAction* fraFFS::gap()
{
    auto* gap = new QAction(this);
    gap->setSeparator(true);
    return gap;
}

void fraFFS::makeCommands()
{
    const auto button = [this](const char* key, const QString& text) {
        auto* action = m_tlbFFS->findChild<QAction*>(QLatin1StringView(key));
        const QString caption = action->iconText();
        action->setText(text);
        action->setIconText(caption); // of the button
        return action;
    };
    const auto own = [this](const QString& name, const QString& text, const QString& picture,
                            const QKeySequence& key, void (fraFFS::*run)()) {
        auto* action = new QAction(icon(picture), text, this);
        action->setObjectName(name);
        action->setShortcut(key);
        action->setShortcutContext(Qt::WidgetShortcut); // in a field the keys mean letters
        connect(action, &QAction::triggered, this, run);
        return action;
    };
    QAction* newFolder = own(u"ffsNewFolder"_s, u"&Neuer Ordner..."_s, u"folder"_s,
                             QKeySequence(u"Ctrl+Shift+N"_s), &fraFFS::makeFolder);
    newFolder->setShortcutContext(Qt::WindowShortcut); // this one is no letter
    m_commands = {
        button("show", u"Ö&ffnen\tEingabe"_s),
        own(u"ffsUp"_s, u"Ordner nach &oben"_s, u"up"_s, Qt::Key_Backspace, &fraFFS::goUp),
        gap(),
        button("open", u"&Zum Telefon senden..."_s),
        button("save", u"Vom Telefon &empfangen..."_s),
        gap(),
        own(u"ffsRename"_s, u"&Umbenennen..."_s, u"edit"_s, Qt::Key_F2, &fraFFS::renameSelected),
        newFolder,
        button("del", u"&Löschen"_s),
        gap(),
        button("refresh", u"Neu l&aden"_s),
    };
    m_lvwFFs->addActions(m_commands);
    m_lvwFFs->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void fraFFS::goUp()
{
    openKey(obex::upKeyPrefix.toString());
}

/// The phone and Kalmo know the kind of a file by its ending.
bool fraFFS::mayChangeEnding(const QString& ending, const QString& wanted)
{
    if (ending.isEmpty() || ending.compare(wanted, Qt::CaseInsensitive) == 0)
        return true;
    const QString change = wanted.isEmpty() ? u"Ohne die Endung %1"_s.arg(ending)
                                            : u"Mit der Endung %1 statt %2"_s.arg(wanted, ending);
    return m_program.context.dialogs.Show(
               {.text = change +
                        u" erkennt das Telefon die Datei vielleicht nicht mehr.\n\nTrotzdem umbenennen?"_s,
                .buttons = toolkit::Buttons::YesNo,
                .icon = toolkit::Icon::Question,
                .defaultButton = toolkit::Answer::No}) == toolkit::Answer::Yes;
}

void fraFFS::renameSelected()
{
    const QStringList names = namesToChange();
    if (names.isEmpty())
        return;
    if (names.size() > 1) {
        m_progress.status(u"Bitte wählen Sie zum Umbenennen nur eine Datei oder einen Ordner."_s);
        return;
    }
    if (!requireFolder())
        return;
    const QString& name = names.first();
    const bool isFile = m_rows.indexOfKey(obex::fileKeyPrefix.toString() + name) >= 0;
    const QString ending = isFile ? endingOf(name) : QString();
    const QString wanted =
        askForName(this, {.title = u"Umbenennen"_s,
                          .label = u"Neuer &Name für %1:"_s.arg(QString(name).replace(u'&', u"&&"_s)),
                          .accept = u"&Umbenennen"_s,
                          .name = name,
                          .stem = name.size() - ending.size()});
    if (wanted.isEmpty() || !mayChangeEnding(ending, endingOf(wanted)))
        return;
    const bool isDone = renameEntry(m_mmc, m_progress, m_listed->below(name), wanted);
    showAgain((isFile ? obex::fileKeyPrefix : obex::folderKeyPrefix).toString() + (isDone ? wanted : name));
}

void fraFFS::makeFolder()
{
    if (!requireFolder())
        return;
    const QString name = askForName(this, {.title = u"Neuer Ordner"_s,
                                           .label = u"&Name des neuen Ordners:"_s,
                                           .accept = u"&Anlegen"_s,
                                           .name = {},
                                           .stem = 0});
    if (!name.isEmpty() && ui::makeFolder(m_mmc, m_progress, *m_listed, name))
        showAgain(obex::folderKeyPrefix.toString() + name);
}

/// Reads the folder again, and selects this row if it is there.
void fraFFS::showAgain(const QString& key)
{
    refreshAfterWork([this] { FfsListRefresh(); });
    if (const int row = m_rows.indexOfKey(key); row >= 0) {
        if (m_lvwFFs->isRowHidden(row, {}))
            m_search->clear();
        m_rows.setCurrent(row);
    }
    m_lvwFFs->setFocus();
}

} // namespace kalmo::ui
