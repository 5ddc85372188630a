#include "ui/window/VcardList.h"

#include "app/Files.h"
#include "operations/ContactFiles.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/VcfFiles.h"
#include "toolkit/Progress.h"
#include "ui/forms/ContactMessages.h"
#include "ui/forms/frmExport.h"
#include "ui/forms/frmVCFneu.h"
#include "ui/forms/frmVorwahl.h"
#include "ui/lists/RowPlace.h"
#include "ui/window/Notices.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::CommandResult;
using toolkit::Icon;

namespace {

QString contactCount(qsizetype count)
{
    return count == 1 ? u"1 Kontakt"_s : u"%1 Kontakte"_s.arg(count);
}

/// `reading` is that of the `count` rows, null where its cards were changed since.
QString countInWords(int count, const phonedata::ContactReading* reading)
{
    if (!reading || reading->isConfirmed())
        return u"%1 gelesen."_s.arg(contactCount(count));
    if (!reading->info)
        return u"%1 gelesen. Das Telefon nennt keine Anzahl."_s.arg(contactCount(count));
    const int counted = reading->info->intBelegt;
    if (reading->arrived() < counted)
        return u"%1 von %2 gelesen. Das Telefon nennt mehr, als es gesendet hat."_s.arg(reading->arrived())
            .arg(counted == 1 ? u"1 Kontakt"_s : u"%1 Kontakten"_s.arg(counted));
    return u"%1 gelesen. Das Telefon nennt nur %2."_s.arg(contactCount(reading->arrived())).arg(counted);
}

struct ReadingEnd
{
    ListState state;
    QString sentence;
};

ReadingEnd endOfReading(CommandResult result, const phonedata::VcardStore& store)
{
    const phonedata::ContactReading* reading = store.lastReading();
    const int shown = store.list()->count();
    switch (result) {
    case CommandResult::Done: {
        const bool areAllMissing = shown == 0 && reading && !reading->isWhole();
        return {areAllMissing ? ListState::Failed : ListState::Read, countInWords(shown, reading)};
    }
    case CommandResult::Cancelled:
        return {ListState::Cancelled, shown > 0
                                          ? u"Das Lesen wurde abgebrochen. Die Liste ist, wie sie war."_s
                                          : placeholderFor(ListState::Cancelled)};
    case CommandResult::Refused:
        return {ListState::Discarded, u"Die gelesene Liste wurde verworfen."_s};
    case CommandResult::Failed:
        break;
    }
    return {ListState::Failed, u"Die Liste konnte nicht gelesen werden."_s};
}

QString sentenceOf(const ContactDeletion& deletion)
{
    if (deletion.result == CommandResult::Failed)
        return u"Beim Löschen ist ein Fehler aufgetreten. Lesen Sie das Telefonbuch neu ein."_s;
    if (deletion.deleted == 0)
        return u"Es wurde nichts gelöscht."_s;
    const int kept = deletion.planned - deletion.deleted;
    return u"%1 gelöscht%2. \"Frühere Stände\" bringt %3 zurück."_s.arg(
        contactCount(deletion.deleted), kept > 0 ? u", %1 nicht (abgebrochen)"_s.arg(kept) : QString(),
        deletion.deleted == 1 ? u"ihn"_s : u"sie"_s);
}

QString sentenceOf(CommandResult saved, const EditedContact& contact)
{
    if (saved == CommandResult::Done)
        return u"Der Kontakt ist im Telefon gespeichert."_s;
    return contact.openSave ? unknownSave() + u" Lesen Sie das Telefonbuch neu ein."_s
                            : u"Die Eingabe wurde nicht gespeichert."_s;
}

QString sentenceOf(const ContactImport& imported)
{
    switch (imported.result) {
    case CommandResult::Done:
        return u"%1 importiert. \"Frühere Stände\" nimmt %2 zurück."_s.arg(
            contactCount(imported.planned), imported.planned == 1 ? u"ihn"_s : u"sie"_s);
    case CommandResult::Cancelled:
        return stoppedImport(imported);
    case CommandResult::Refused:
        return nothingImported();
    default:
        return u"Beim Importieren ist ein Fehler aufgetreten. Lesen Sie das Telefonbuch neu ein."_s;
    }
}

/// Saves in the format of the file's ending. The described format is the .csv of all other names.
/// Cards are made from those of the phone, as long as the list shows them.
bool saveContacts(const phonedata::VcardStore& store, const QString& path)
{
    app::Context& context = store.context();
    const toolkit::ListRows& rows = *store.list();
    operations::SavedList list{.kind = operations::SavedKind::Contacts};
    const operations::SavedListFormat* format = operations::findFormat(path, list.kind);
    if (!format || format->ending == u".csv")
        return phonedata::SaveVcfCsv(context, rows, path);
    const phonedata::ContactReading* reading = store.lastReading();
    if (format->ending == u".vcf" && reading && std::ssize(reading->cards.cards) == rows.count())
        return phonedata::saveBackup(context, path, operations::contactCardBytes(*reading));
    for (int row = 0; row < rows.count(); ++row)
        list.contacts.push_back(phonedata::vcfEntryFrom(rows.row(row)));
    return phonedata::saveBackup(context, path, format->write(list));
}

} // namespace

VcardList::VcardList(const WindowParts& parts, std::shared_ptr<obex::clsMmc> client, QObject* parent)
    : QObject(parent), m_parts(parts), m_rows(phonedata::makeVcfRows()),
      m_store(std::make_shared<phonedata::VcardStore>(std::move(client), *m_rows))
{
    connect(m_store.get(), &phonedata::VcardStore::capacityChanged, this, &VcardList::captionChanged);
}

VcardList::~VcardList() = default;

QString VcardList::caption() const
{
    return u"Telefonbuch - "_s + m_store->lblVCFkap() + u" Speicherplätze, "_s + m_store->lblVCFbelegt() +
           u" belegt"_s;
}

QString VcardList::obstacleTo(Command command) const
{
    return obstacleIn(*m_rows, command, u"Im Telefonbuch"_s);
}

void VcardList::run(Command command)
{
    switch (command) {
    case Command::New:
        return add();
    case Command::Edit:
        return edit();
    case Command::Delete:
        return deleteSelected();
    case Command::Refresh:
        return refresh();
    case Command::Save:
        return save();
    case Command::Open:
        m_parts.program.context.dialogs.Show(
            {.text =
                 u"Diese Funktion wird für das angeschlossene Telefon nicht unterstützt.\nBitte benutzen Sie "
                 u"den Import (*.CSV Datei). Darüber können Sie sowohl CSV Dateien wie auch Sicherungen im "
                 u"*.tel Dateiformat öffnen."_s,
             .icon = Icon::Information});
        return;
    case Command::Export:
        return exportList();
    case Command::Import:
        Q_EMIT menuWanted(command);
        return;
    case Command::Read:
    case Command::Write:
    case Command::Help:
        return;
    }
}

void VcardList::refresh()
{
    const auto editAreaCodes = [this](const QString& answer) { showAreaCodeDialog(answer); };
    Q_EMIT stateChanged(ListState::Reading);
    RowPlace place(*m_rows);
    const CommandResult result = refreshContacts(*m_store, m_parts.progress, &m_parts.busy, editAreaCodes);
    place.restore();
    m_isRead = true;
    const ReadingEnd end = endOfReading(result, *m_store);
    Q_EMIT stateChanged(end.state);
    Q_EMIT ended(end.sentence);
}

void VcardList::readAgain()
{
    forget();
    refresh();
}

void VcardList::forget()
{
    m_store->forget();
    m_isRead = false;
    Q_EMIT stateChanged(ListState::NotRead);
}

void VcardList::add()
{
    if (allowNewContact(*m_store))
        showForm(-1);
}

/// Edits the contact of a row, or a new one with -1. The window's status bar says how a save has ended, since
/// it also says that the phone is busy for long.
void VcardList::showForm(int row)
{
    frmVCFneu form(m_parts.program, m_store, m_parts.window);
    if (row >= 0)
        form.loadRow(row);
    form.exec();
    noteList();
    if (form.lastSave())
        Q_EMIT ended(sentenceOf(*form.lastSave(), form.edited()));
}

/// Saving and importing read the whole phonebook, also where the list was not read before.
void VcardList::noteList()
{
    if (isKnown())
        Q_EMIT stateChanged(ListState::Read);
}

void VcardList::noteImport(const ContactImport& imported)
{
    noteList();
    Q_EMIT ended(sentenceOf(imported));
}

void VcardList::edit()
{
    const int row = rowToEdit(*m_rows);
    if (row >= 0 && allowChange(*m_store, row))
        showForm(row);
}

void VcardList::deleteSelected()
{
    const ContactDeletion deletion = VcfDeleteSelected(*m_store, m_parts.progress);
    if (deletion.result == CommandResult::Failed) // the store has emptied the list
        Q_EMIT stateChanged(ListState::Unknown);
    Q_EMIT ended(sentenceOf(deletion));
}

void VcardList::save()
{
    app::Context& context = m_parts.program.context;
    if (tellIfEmpty(context, *m_rows))
        return;
    const QString path = context.dialogs.SaveFile({.title = u"Kalmo - Telefonbuch Backup erstellen"_s,
                                                   .folder = app::GetLastInitDir(context, m_rows->name()),
                                                   .types = {{u" (*.csv Telefonbuch)"_s, {u"*.csv"_s}}},
                                                   .confirmOverwrite = true});
    if (path.isEmpty())
        return;
    app::SetLastInitDir(context, m_rows->name(), path);
    if (!saveContacts(*m_store, path))
        return;
    const QString cut = cutText(*m_store, path);
    context.dialogs.Show({.text = cut.isEmpty() ? u"Datei gespeichert."_s : u"Datei gespeichert.\n\n"_s + cut,
                          .icon = cut.isEmpty() ? Icon::Information : Icon::Exclamation});
}

void VcardList::exportList()
{
    frmExport form(m_parts.program, m_parts.window);
    form.formPresent(*m_rows, u"Telefonbuch"_s, {phonedata::VcfLuid});
    form.exec();
}

void VcardList::editAreaCodes()
{
    QString answer;
    {
        const toolkit::BusyScope busy(&m_parts.busy);
        phonedata::ReadAreaCodes(m_parts.program.line, m_parts.progress.panel, answer);
    }
    if (!answer.isEmpty())
        showAreaCodeDialog(answer);
}

void VcardList::showAreaCodeDialog(const QString& answer)
{
    m_parts.window->hide();
    frmVorwahl form(m_parts.program, m_parts.window);
    form.Form_Present(answer);
    const bool isSaved = form.exec() == QDialog::Accepted;
    m_parts.window->show();
    if (isSaved)
        Q_EMIT ended(u"Die Vorwahlen sind im Telefon gespeichert."_s);
}

} // namespace kalmo::ui
