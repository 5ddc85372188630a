// What the import's dialog does: open sources, make the preview, import.

#include "app/Files.h"
#include "app/Version.h"
#include "transfer/import/ImportSteps.h"
#include "ui/forms/ContactCommands.h"
#include "ui/import/AddressFrame.h"
#include "ui/import/frmImportPb.h"
#include "ui/import/HintList.h"
#include "ui/import/NumberFrame.h"
#include "ui/import/PreviewModel.h"
#include "ui/import/TextFrame.h"
#include "ui/window/StatusArea.h"

#include <QCheckBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QRadioButton>
#include <QTreeView>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using phonedata::Store;
using toolkit::Icon;
using transfer::Shape;

namespace {

const QString dialogUse = u"frmImportPb"_s; // of the remembered folder
constexpr double pauseBeforeBook = 0.1;     // seconds
constexpr qint64 patience = 150;            // milliseconds that a preview takes without a word
constexpr qint64 betweenYields = 40;

QByteArray contentOf(const QString& path)
{
    QByteArray bytes;
    if (QFileInfo(path).size() > transfer::largestText)
        return QByteArray(transfer::largestText + 1, ' ');
    app::readWholeFile(path, bytes);
    return bytes;
}

} // namespace

void frmImportPb::openFile(int choice)
{
    const bool isFree = choice == 0;
    app::Context& context = m_program.context;
    const QString folder = isFree ? app::GetLastInitDir(context, dialogUse)
                                  : QDir(context.sy.Paths.Storage).filePath(u"Backup"_s);
    const QString path = context.dialogs.OpenFile(
        {.title = app::productName() + u" - Datei importieren"_s,
         .folder = folder,
         .types = {{u"Importdateien (*.csv; *.txt; *.tel)"_s, {u"*.csv"_s, u"*.txt"_s, u"*.tel"_s}},
                   {u"Alle Dateien (*.*)"_s, {u"*"_s}}}});
    if (path.isEmpty()) {
        m_textFrame->showOpened({}, {});
        return;
    }
    takeFile(path);
    if (isFree)
        app::SetLastInitDir(context, dialogUse, path);
}

void frmImportPb::takeFile(const QString& path)
{
    m_loading = true;
    m_sta->setText(u"Lese "_s + path + u"..."_s);
    m_mended = m_remembered.options;
    const QByteArray bytes = contentOf(path);
    transfer::TextRequest request{.reading = transfer::Reading::Simple};
    for (size_t field = 0; field < transfer::fieldsOf(m_shape).size(); ++field)
        request.headings[field] = m_shape == Shape::Classic ? m_remembered.classicHeadings[field]
                                                            : m_remembered.vcardHeadings[field];
    transfer::OpenedText opened = transfer::openText(path, bytes, m_shape, request);
    if (opened.options.layout.filter.isEmpty() && !m_textFrame->filter().isEmpty()) {
        request.filter = m_textFrame->filter(); // what the user wants filtered stays
        opened = transfer::openText(path, bytes, m_shape, request);
    }
    const bool isFine = opened.fault == transfer::TextFault::None;
    m_textFrame->showOpened(isFine ? path : QString(), opened);
    m_sta->setText({});
    m_loading = false;
    if (!isFine)
        tellFault(path, opened.fault);
    RebuildPreview();
}

void frmImportPb::tellFault(const QString& path, transfer::TextFault fault)
{
    using transfer::TextFault;
    QString text;
    switch (fault) {
    case TextFault::None:
        return;
    case TextFault::NoFirstLine:
        text = u"Die Datei %1 enthält keine Daten in der ersten Zeile anhand derer sich die Spalten erkennen "
               u"lassen.\n"
               u"Wenn Sie die Datei von Hand bearbeitet haben, sorgen Sie dafür, daß sich in der ersten "
               u"Zeile Daten "
               u"(am besten die Spaltennamen) befinden."_s;
        break;
    case TextFault::Binary:
        text = u"Die Datei %1 ist keine Textdatei. Speichern Sie eine Tabelle zuerst als CSV."_s;
        break;
    case TextFault::TooManyColumns:
        text = u"Die Datei %1 hat mehr als 16384 Spalten."_s;
        break;
    case TextFault::TooLarge:
        text = u"Die Datei %1 ist größer als 32 MB oder hat mehr als 250000 Zeilen."_s;
        break;
    }
    m_program.context.dialogs.Show({.text = text.arg(path), .icon = Icon::Exclamation});
}

/// The first thing that is seen of an address book is the question for it.
void frmImportPb::activateBook()
{
    m_program.context.clock.WaitSeconds(pauseBeforeBook);
    askForBook(false);
    if (!m_bookPath.isEmpty() && m_book.fault() != transfer::AddressBookFault::None)
        QDialog::reject();
}

void frmImportPb::askForBook(bool isFolder)
{
    app::Context& context = m_program.context;
    const QString title = app::productName() + u" - Adressbuch öffnen"_s;
    const QString folder = app::GetLastInitDir(context, dialogUse);
    const QString path = isFolder
                             ? context.dialogs.PickFolder(title, folder)
                             : context.dialogs.OpenFile(
                                   {.title = title,
                                    .folder = folder,
                                    .types = {{u"Adressbücher (*.wab; *.vcf)"_s, {u"*.wab"_s, u"*.vcf"_s}},
                                              {u"Alle Dateien (*.*)"_s, {u"*"_s}}}});
    if (!path.isEmpty())
        takeBook(path);
}

void frmImportPb::takeGiven()
{
    if (m_from == ImportFrom::AddressBook)
        takeBook(m_given);
    else
        takeFile(m_given);
}

void frmImportPb::takeBook(const QString& path)
{
    m_bookPath = path;
    m_mended = m_remembered.options;
    if (!readBook(path))
        return;
    app::SetLastInitDir(m_program.context, dialogUse, path);
    m_addressFrame->showPath(path);
    RebuildPreview();
}

bool frmImportPb::readBook(const QString& path)
{
    const bool isRead = m_book.OpenWab(path) && m_book.ReadAllContacts(m_program.context.clock.Now().date());
    m_book.CloseWap();
    if (isRead)
        return true;
    const bool isOld = m_book.fault() == transfer::AddressBookFault::OldLayout;
    m_program.context.dialogs.Show(
        {.text = isOld ? u"Das Adressbuch stammt aus Windows 95 und kann nicht eingelesen werden."_s
                       : u"Das Windows Adressbuch (WAB / Outlook Express) konnte nicht eingelesen werden."_s,
         .icon = Icon::Exclamation});
    return false;
}

void frmImportPb::mend(const transfer::ImportHint& hint)
{
    m_mended = transfer::mended(options(), hint);
    const bool changesText =
        hint.kind == transfer::HintKind::ReadAsCsv || hint.kind == transfer::HintKind::OtherEncoding;
    if (m_textFrame && changesText) {
        m_loading = true;
        transfer::TextRequest request{.encoding = m_mended.text.encoding,
                                      .separator = m_mended.text.layout.separator,
                                      .filter = m_mended.text.layout.filter,
                                      .reading = m_mended.text.layout.reading};
        const QStringList headings = m_textFrame->chosenHeadings();
        for (qsizetype field = 0; field < headings.size(); ++field)
            request.headings[static_cast<size_t>(field)] = headings[field];
        const QString path = m_textFrame->path();
        m_textFrame->showOpened(path, transfer::openText(path, contentOf(path), m_shape, request));
        m_loading = false;
    }
    RebuildPreview();
}

transfer::ImportSource frmImportPb::source() const
{
    if (m_from == ImportFrom::AddressBook)
        return {.contacts = m_book.contacts()};
    return {.path = m_textFrame->path(), .text = contentOf(m_textFrame->path())};
}

transfer::ImportOptions frmImportPb::options() const
{
    transfer::ImportOptions chosen = m_mended;
    if (m_textFrame)
        m_textFrame->take(chosen.text);
    else
        m_addressFrame->take(chosen.addresses);
    m_numberFrame->take(chosen.numbers);
    chosen.markExisting = m_chkMark0->isChecked();
    chosen.existingByNumber = m_chkMark1->isChecked();
    return chosen;
}

/// Compares with the phonebook, also where the import goes to the provider list.
transfer::ExistingEntries frmImportPb::existing() const
{
    const toolkit::ListRows* list = m_shape == Shape::Classic ? m_lists.lvwTB : m_lists.store->list();
    const int columns = m_shape == Shape::Classic ? 2 : static_cast<int>(transfer::PreviewEmail);
    std::vector<QStringList> cells;
    for (int row = 0; list && row < list->count(); ++row) {
        QStringList texts;
        for (int column = 0; column < columns; ++column)
            texts.append(list->text(row, column));
        cells.push_back(texts);
    }
    return {m_shape, cells};
}

void frmImportPb::refresh()
{
    if (m_chkAutoRefresh->isChecked())
        RebuildPreview();
}

void frmImportPb::RebuildPreview()
{
    if (m_loading || m_building.isValid())
        return;
    m_building.start();
    m_lastYield = 0;
    build();
    if (m_building.elapsed() >= patience && m_sta->isBusy()) {
        m_sta->progress().hide();
        m_sta->SetBusy(false);
        m_sta->offerCancel(false);
    }
    m_building.invalidate();
    m_sta->setText({});
    if (m_closeWanted)
        QDialog::reject();
}

void frmImportPb::build()
{
    const bool hasNoFile =
        m_textFrame && (m_textFrame->path().isEmpty() || !app::FileExists(m_textFrame->path()));
    if (hasNoFile) {
        m_hints->show({});
        m_model->setPreview({.shape = m_shape});
        return;
    }
    transfer::Preview preview = transfer::RebuildPreview(
        source(), m_shape, options(), existing(), m_program.context.clock.Now().date(),
        [this](qsizetype done, qsizetype total) { return advance(done, total); });
    m_hints->show(preview.hints);
    m_sortColumn = -1;
    m_view->header()->setSortIndicatorShown(false);
    m_model->setPreview(std::move(preview));
}

/// Keeps the window painted while a large source is read, and lets the user stop it.
bool frmImportPb::advance(qsizetype done, qsizetype total)
{
    const qint64 elapsed = m_building.elapsed();
    if (elapsed < patience || elapsed - m_lastYield < betweenYields)
        return true;
    m_lastYield = elapsed;
    if (!m_sta->isBusy()) {
        m_sta->offerCancel(true);
        m_sta->SetBusy(true);
        m_sta->setText(u"Vergleiche vorhandene Kontakte..."_s);
    }
    const toolkit::Progress progress = m_sta->progress();
    progress.start(static_cast<int>(done), static_cast<int>(std::max(done, total)));
    m_program.context.clock.DoEvents();
    return !progress.cancelled() && !m_closeWanted;
}

void frmImportPb::showCounts()
{
    const transfer::Preview& preview = m_model->preview();
    const int existing = preview.existingCount();
    QString text = u"%1 von %2 zum Import ausgewählt"_s.arg(preview.checkedCount()).arg(preview.rows.size());
    if (existing > 0)
        text += u", %1 schon vorhanden"_s.arg(existing);
    m_lblCounts->setText(preview.isWhole ? text : u"Die Vorschau wurde abgebrochen."_s);
}

void frmImportPb::sortBy(int column)
{
    const bool isSame = column == m_sortColumn;
    m_sortOrder = isSame && m_sortOrder == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    m_sortColumn = column;
    m_model->sort(column, m_sortOrder);
    m_view->header()->setSortIndicator(column, m_sortOrder);
    m_view->header()->setSortIndicatorShown(true);
}

std::vector<size_t> frmImportPb::markedRows() const
{
    std::vector<size_t> rows;
    for (const QModelIndex& index : m_view->selectionModel()->selectedRows())
        rows.push_back(static_cast<size_t>(index.row()));
    return rows;
}

void frmImportPb::cmdSelAll_Click()
{
    m_model->change(transfer::selectAll);
}

void frmImportPb::cmdSelNon_Click()
{
    m_model->change(transfer::selectNone);
}

void frmImportPb::cmdSelSet_Click()
{
    m_model->change(
        [rows = markedRows()](transfer::Preview& preview) { transfer::selectRows(preview, rows); });
}

void frmImportPb::cmdSelUnset_Click()
{
    m_model->change(
        [rows = markedRows()](transfer::Preview& preview) { transfer::deselectRows(preview, rows); });
}

void frmImportPb::cmdImport_Click()
{
    if (m_sta->isBusy() || m_building.isValid() || m_numberFrame->rejectsFields())
        return;
    if (m_shape == Shape::Classic)
        ImportToClassicList();
    else
        ImportToVcardStore();
}

void frmImportPb::ImportToClassicList()
{
    using transfer::ClassicStep;
    toolkit::Dialogs& dialogs = m_program.context.dialogs;
    ClassicStep step = ClassicStep::Ready;
    m_model->change([&step](transfer::Preview& preview) { step = transfer::nextClassicStep(preview); });
    if (step != ClassicStep::Ready) {
        const toolkit::Answer answer = dialogs.Show(transfer::messageFor(step));
        if (step != ClassicStep::NameTooLong || answer != toolkit::Answer::Yes)
            return;
        m_model->change(transfer::shortenNames);
        dialogs.Show(transfer::messageOfShortening());
        return;
    }
    const bool isForProviders = m_optDest1->isChecked();
    std::vector<toolkit::ListRow> rows;
    if (isForProviders) {
        for (const phonedata::ProviderEntry& entry : transfer::checkedProviders(m_model->preview()))
            rows.push_back(phonedata::toRow(entry));
        m_lists.lvwNE->addAll(std::move(rows));
        m_program.memory.NeDirty = true;
    } else {
        for (const phonedata::ClassicEntry& entry : transfer::checkedEntries(m_model->preview()))
            rows.push_back(phonedata::toRow(entry));
        m_lists.lvwTB->addAll(std::move(rows));
        m_program.memory.TbDirty = true;
    }
    Q_EMIT entriesAdded(isForProviders ? Store::Providers : Store::Phonebook);
    dialogs.Show(transfer::messageOfTakenEntries());
    saveOptions();
}

void frmImportPb::ImportToVcardStore()
{
    using transfer::VcardStep;
    toolkit::Dialogs& dialogs = m_program.context.dialogs;
    int unchecked = 0;
    m_model->change(
        [&unchecked](transfer::Preview& preview) { unchecked = transfer::uncheckNumberless(preview); });
    if (unchecked > 0)
        dialogs.Show(transfer::messageOfUnchecked(unchecked));
    const int freePlaces = m_lists.store->freePlaces();
    const VcardStep step = transfer::nextVcardStep(m_model->preview(), freePlaces);
    if (step != VcardStep::Ready) {
        dialogs.Show(transfer::messageFor(step, m_model->preview(), freePlaces));
        return;
    }
    bool isDone = false;
    {
        m_sta->offerCancel(false);
        const toolkit::BusyScope busy(m_sta);
        m_sta->setText(u"Datensätze werden importiert..."_s);
        m_sta->progress().start(0, 0);
        isDone =
            importContacts(*m_lists.store, transfer::checkedContacts(m_model->preview()), m_sta->progress());
        m_sta->progress().hide();
    }
    if (!isDone)
        dialogs.Show({.text = u"Es ist ein Fehler beim Importieren aufgetreten."_s,
                      .title = app::productName() + u" - Datensätze Importieren"_s});
    // The box of success follows that of a failure, too.
    dialogs.Show({.text = u"Importieren erfolgreich abgeschlossen."_s});
    m_sta->setText(u"Importieren erfolgreich abgeschlossen."_s);
    saveOptions();
    if (!isDone)
        QDialog::reject();
}

void frmImportPb::saveOptions()
{
    m_remembered.options = options();
    m_remembered.refreshAtOnce = m_chkAutoRefresh->isChecked();
    if (m_textFrame && m_shape == Shape::Classic) {
        const QStringList headings = m_textFrame->chosenHeadings();
        for (size_t field = 0; field < m_remembered.classicHeadings.size(); ++field)
            m_remembered.classicHeadings[field] = headings.value(static_cast<qsizetype>(field));
    }
    transfer::SaveImportOptions(m_program.context.settings, m_remembered);
}

} // namespace kalmo::ui
