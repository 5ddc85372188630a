#include "ui/window/ClassicList.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "operations/SavedLists.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/ClassicStore.h"
#include "ui/forms/frmExport.h"
#include "ui/forms/frmNEentry.h"
#include "ui/forms/frmTBentry.h"
#include "ui/lists/RowPlace.h"
#include "ui/window/ClassicWords.h"
#include "ui/window/ClassicWriting.h"
#include "ui/window/Notices.h"

#include <QDir>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::CommandResult;
using phonedata::Store;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

namespace {

QString entryCount(int count)
{
    return count == 1 ? u"1 Eintrag"_s : u"%1 Einträge"_s.arg(count);
}

bool isUnreadable(operations::FileFault fault)
{
    using operations::FileFault;
    return fault == FileFault::NoSuchFile || fault == FileFault::NoRegularFile ||
           fault == FileFault::TooLarge || fault == FileFault::NotReadable;
}

} // namespace

ClassicList::ClassicList(const WindowParts& parts, Store store, QObject* parent)
    : QObject(parent), m_parts(parts), m_store(store), m_rows(phonedata::traitsOf(store).makeRows())
{
}

ClassicList::~ClassicList() = default;

bool ClassicList::isDirty() const
{
    return phonedata::isDirty(m_parts.program.memory, m_store);
}

QString ClassicList::obstacleTo(Command command) const
{
    return obstacleIn(*m_rows, command,
                      m_store == Store::Phonebook ? u"Im Telefonbuch"_s : u"In der Providerliste"_s);
}

void ClassicList::forget()
{
    if (isDirty())
        return;
    m_rows->clear();
    m_isRead = false;
    m_origin.forget();
    Q_EMIT stateChanged(ListState::NotRead);
}

void ClassicList::run(Command command)
{
    switch (command) {
    case Command::Read:
        return read();
    case Command::Write:
        return write();
    case Command::New:
        return edit(false);
    case Command::Edit:
        return edit(true);
    case Command::Delete:
        return deleteSelected();
    case Command::Save:
        return save();
    case Command::Export:
        return exportList();
    case Command::Open:
    case Command::Import:
        Q_EMIT menuWanted(command);
        return;
    case Command::Refresh:
    case Command::Help:
        return;
    }
}

operations::ListJob ClassicList::job() const
{
    return {.line = m_parts.program.line,
            .memory = m_parts.program.memory,
            .store = m_store,
            .window = &m_parts.busy,
            .progress = m_parts.progress,
            .shown = m_rows.get()};
}

void ClassicList::read()
{
    RowPlace place(*m_rows);
    std::vector<toolkit::ListRow>& before = m_before.emplace();
    for (int row = 0; row < m_rows->count(); ++row)
        before.push_back(m_rows->row(row));
    Q_EMIT stateChanged(ListState::Reading);
    const CommandResult result = readClassicList(
        {m_parts.program.line, m_parts.program.memory, m_rows.get(), &m_parts.busy, m_parts.progress},
        m_store);
    endReading(result, *std::exchange(m_before, std::nullopt));
    place.restore();
}

/// `before` are the rows ahead of the reading.
void ClassicList::endReading(CommandResult result, std::vector<toolkit::ListRow> before)
{
    if (result == CommandResult::Refused) { // the changes stay
        Q_EMIT stateChanged(ListState::NotWritten);
        return;
    }
    const phonedata::StoreContent& content = phonedata::contentOf(m_parts.program.memory, m_store);
    const bool isWhole = content.certainty != phonedata::Certainty::Unknown;
    if (isWhole) {
        m_isRead = true;
        m_origin = content;
    }
    if (result != CommandResult::Done && !isWhole) {
        keepAfterFailure(std::move(before));
        return;
    }
    Q_EMIT stateChanged(ListState::Read);
    if (result != CommandResult::Done) { // the phone did not confirm the end
        Q_EMIT ended(u"%1 gelesen. Das Telefon hat das Ende des Lesens nicht bestätigt."_s.arg(
            entryCount(m_rows->count())));
        return;
    }
    Q_EMIT becameClean();
    Q_EMIT ended(u"%1 gelesen."_s.arg(entryCount(m_rows->count())));
}

/// A reading that fails in the middle leaves the list empty. One that the user has stopped, or that could not
/// begin, leaves what was on screen.
void ClassicList::keepAfterFailure(std::vector<toolkit::ListRow> before)
{
    if (!m_parts.progress.cancelled()) {
        if (m_rows->count() == 0)
            m_origin.forget();
        Q_EMIT stateChanged(ListState::Failed);
        Q_EMIT ended(m_rows->count() == 0 ? u"Die Liste konnte nicht gelesen werden."_s
                                          : u"Das Lesen ist fehlgeschlagen. Die Liste ist, wie sie war."_s);
        return;
    }
    m_rows->clear();
    m_rows->addAll(std::move(before));
    Q_EMIT stateChanged(ListState::Cancelled);
    Q_EMIT ended(u"Das Lesen wurde abgebrochen. Die Liste ist, wie sie war."_s);
}

std::vector<phonedata::ClassicEntry> ClassicList::entries() const
{
    if (!m_before)
        return phonedata::classicEntries(*m_rows);
    std::vector<phonedata::ClassicEntry> entries;
    for (const toolkit::ListRow& row : *m_before)
        entries.push_back(phonedata::classicEntryFrom(row));
    return entries;
}

void ClassicList::write()
{
    RowPlace place(*m_rows);
    m_isWriting = true;
    const toolkit::BusyScope busy(&m_parts.busy);
    const bool wasDirty = isDirty();
    const CommandResult result = writeClassicList(job(), *m_rows, m_origin);
    m_isWriting = false;
    if (isDirty() && !wasDirty)
        setDirty();
    place.restore();
    if (result != CommandResult::Done) {
        Q_EMIT ended(result == CommandResult::Refused ? u"Es wurde nichts geschrieben."_s
                                                      : u"Beim Schreiben ist ein Fehler aufgetreten."_s);
        return;
    }
    nameTheNameless();
    Q_EMIT stateChanged(ListState::Read);
    Q_EMIT becameClean();
    Q_EMIT ended(u"%1 ins Telefon geschrieben. \"Frühere Stände\" bringt die vorigen zurück."_s.arg(
        entryCount(m_rows->count())));
}

/// Opened and imported files bring entries without a name. After the write the list shows them as the next
/// reading does.
void ClassicList::nameTheNameless()
{
    bool isAny = false;
    for (int row = 0; row < m_rows->count(); ++row) {
        if (!m_rows->text(row, phonedata::NameColumn).isEmpty())
            continue;
        m_rows->setText(row, phonedata::NameColumn, phonedata::namelessEntry);
        isAny = true;
    }
    if (isAny && m_rows->isSorted())
        m_rows->sortBy(m_rows->sortColumn(), m_rows->sortOrder());
}

template <typename Form>
void ClassicList::showForm(int row)
{
    Form form(m_parts.program, *m_rows, m_parts.window);
    connect(&form, &Form::listChanged, this, [this] {
        setDirty();
        Q_EMIT ended(u"Der Eintrag ist in der Liste gespeichert. Ins Telefon kommt das mit \"Schreiben\"."_s);
    });
    form.Form_Present(row);
    form.exec();
}

void ClassicList::edit(bool existing)
{
    const int row = existing ? rowToEdit(*m_rows) : -1;
    static constexpr std::array<void (ClassicList::*)(int), 2> forms = {&ClassicList::showForm<frmTBentry>,
                                                                        &ClassicList::showForm<frmNEentry>};
    (this->*phonedata::rowOf(forms, m_store))(row);
}

void ClassicList::deleteSelected()
{
    const qsizetype count = m_rows->selectedRows().size();
    const Answer answer =
        m_parts.program.context.dialogs.Show({.text = u"%1 Einträge wirklich löschen?"_s.arg(count),
                                              .buttons = Buttons::YesNo,
                                              .icon = Icon::Question,
                                              .defaultButton = Answer::No});
    if (answer != Answer::Yes)
        return;
    for (int row = m_rows->count() - 1; row >= 0; --row) {
        if (m_rows->row(row).selected)
            m_rows->removeAt(row);
    }
    setDirty();
    Q_EMIT ended(u"%1 aus der Liste gelöscht. Ins Telefon kommt das mit \"Schreiben\"."_s.arg(
        entryCount(static_cast<int>(count))));
}

void ClassicList::noteImport(int entries)
{
    setDirty();
    Q_EMIT ended(u"%1 importiert. Ins Telefon kommt das mit \"Schreiben\"."_s.arg(entryCount(entries)));
}

void ClassicList::setDirty()
{
    phonedata::setDirty(m_parts.program.memory, m_store, true);
    Q_EMIT stateChanged(ListState::NotWritten);
    Q_EMIT becameDirty();
}

bool ClassicList::mayPassOverChanges(const QString& text)
{
    return !isDirty() || m_parts.program.context.dialogs.Show({.text = text,
                                                               .buttons = Buttons::YesNo,
                                                               .icon = Icon::Question,
                                                               .defaultButton = Answer::No}) == Answer::Yes;
}

void ClassicList::openBackup(int choice)
{
    app::Context& context = m_parts.program.context;
    if (!mayReplaceList())
        return;
    const ClassicWords& words = wordsOf(m_store);
    const QString backups = app::backupFolder(context.sy);
    const QString path = context.dialogs.OpenFile(
        {.title = words.openTitle.toString(),
         .folder = choice == 0 ? app::GetLastInitDir(context, m_rows->name()) : backups,
         .types = {{words.fileType.toString(), {words.pattern.toString()}}}});
    if (path.isEmpty())
        return;
    if (choice == 0)
        app::SetLastInitDir(context, m_rows->name(), path);
    load(path);
}

void ClassicList::openFile(const QString& path)
{
    if (mayReplaceList())
        load(path);
}

bool ClassicList::mayReplaceList()
{
    return m_rows->count() == 0 || mayPassOverChanges(unsavedChangesText(m_store));
}

/// The entries of a file; nothing, after a message, if there are none. A file with another ending is read as
/// one of the described format.
std::optional<std::vector<phonedata::ClassicEntry>> ClassicList::entriesIn(const QString& path)
{
    app::Context& context = m_parts.program.context;
    const operations::SavedKind kind = operations::savedKind(m_store);
    if (!operations::findFormat(path, kind)) {
        const auto rows = phonedata::traitsOf(m_store).makeRows();
        if (!phonedata::traitsOf(m_store).load(context, *rows, path))
            return {};
        return phonedata::classicEntries(*rows);
    }
    operations::SavedListFault fault;
    auto list =
        operations::readSavedList(path, kind, {operations::Strictness::Lenient, context.sy.PhoneType}, fault);
    if (list)
        return std::move(list->entries);
    if (!isUnreadable(fault.kind))
        return std::vector<phonedata::ClassicEntry>();
    context.dialogs.Show({.text = u"Fehler beim Lesen der Datei "_s + path, .icon = Icon::Information});
    return {};
}

/// An unreadable file, and one without an entry, changes nothing.
void ClassicList::load(const QString& path)
{
    const auto entries = entriesIn(path);
    if (!entries)
        return;
    if (entries->empty()) {
        m_parts.program.context.dialogs.Show(
            {.text = u"Die Datei %1 enthält keinen lesbaren Eintrag. Die Liste bleibt, wie sie "
                     u"ist."_s.arg(QDir::toNativeSeparators(path)),
             .icon = Icon::Exclamation});
        return;
    }
    std::vector<toolkit::ListRow> rows;
    for (const phonedata::ClassicEntry& entry : *entries)
        rows.push_back(phonedata::toRow(entry));
    m_rows->clear();
    m_rows->addAll(std::move(rows));
    m_origin.forget();
    setDirty();
    Q_EMIT ended(
        u"%1 geladen. Ins Telefon kommen sie erst mit \"Schreiben\"."_s.arg(entryCount(m_rows->count())));
}

void ClassicList::save()
{
    app::Context& context = m_parts.program.context;
    const ClassicWords& words = wordsOf(m_store);
    if (!mayPassOverChanges(words.changed.toString() + u"\n\nTrotzdem speichern?"_s) ||
        tellIfEmpty(context, *m_rows))
        return;
    const QString path =
        context.dialogs.SaveFile({.title = words.saveTitle.toString(),
                                  .folder = app::GetLastInitDir(context, m_rows->name()),
                                  .types = {{words.fileType.toString(), {words.pattern.toString()}}},
                                  .confirmOverwrite = true});
    if (path.isEmpty())
        return;
    app::SetLastInitDir(context, m_rows->name(), path);
    const operations::SavedList list{.kind = operations::savedKind(m_store),
                                     .entries = phonedata::classicEntries(*m_rows)};
    const bool isSaved = operations::findFormat(path, list.kind)
                             ? phonedata::saveBackup(context, path, operations::savedListBytes(path, list))
                             : phonedata::traitsOf(m_store).save(context, *m_rows, path);
    if (isSaved)
        context.dialogs.Show({.text = u"Datei gespeichert."_s, .icon = Icon::Information});
}

void ClassicList::exportList()
{
    frmExport form(m_parts.program, m_parts.window);
    form.formPresent(*m_rows, m_store == Store::Phonebook ? u"Telefonbuch"_s : u"Providerliste"_s);
    form.exec();
}

} // namespace kalmo::ui
