// The import's dialog: its preview, and the rows that are chosen in it.

#include "app/Files.h"
#include "ui/import/AddressFrame.h"
#include "ui/import/frmImportPb.h"
#include "ui/import/HintList.h"
#include "ui/import/NumberFrame.h"
#include "ui/import/PreviewModel.h"
#include "ui/import/TextFrame.h"
#include "ui/lists/FilteredView.h"
#include "ui/window/StatusArea.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using transfer::Shape;

namespace {

constexpr qint64 patience = 150; // milliseconds that a preview takes without a word
constexpr qint64 betweenYields = 40;

} // namespace

/// Without a text where there is no file, or none that can be read.
transfer::ImportSource frmImportPb::source() const
{
    if (m_from == ImportFrom::AddressBook)
        return {.contacts = m_book.contacts(), .losses = m_book.losses()};
    const QString path = m_textFrame->path();
    transfer::TextFile file = transfer::readTextFile(path);
    if (file.fault != transfer::TextFault::None)
        return {};
    return {.path = path, .text = std::move(file.bytes)};
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
    beginWork();
    m_sta->setText(m_textFrame ? u"Lese "_s + m_textFrame->path() + u"..."_s
                               : u"Einträge werden erzeugt..."_s);
    build();
    endWork();
    m_sta->setText({});
    if (m_closeWanted)
        QDialog::reject();
}

void frmImportPb::beginWork()
{
    m_building.start();
    m_lastYield = 0;
    m_lastDone = 0;
}

/// Leaves the state that advance() enters after a while.
void frmImportPb::endWork()
{
    if (m_building.elapsed() >= patience && m_sta->isBusy()) {
        m_sta->progress().hide();
        m_sta->SetBusy(false);
        m_sta->offerCancel(false);
    }
    m_building.invalidate();
}

void frmImportPb::build()
{
    const transfer::ImportSource read = source();
    m_isUnread = m_textFrame && !read.text && app::FileExists(m_textFrame->path());
    if (m_textFrame && !read.text) {
        m_hints->show({});
        m_model->setPreview({.shape = m_shape});
        return;
    }
    const transfer::ImportOptions chosen = options();
    transfer::ExistingEntries compared = chosen.markExisting ? existing() : transfer::ExistingEntries();
    transfer::Preview preview =
        transfer::RebuildPreview(read, m_shape, chosen, compared, m_program.context.clock.Now().date(),
                                 [this](qsizetype done, qsizetype total) { return advance(done, total); });
    m_hints->show(preview.hints);
    m_sortColumn = -1;
    m_view->header()->setSortIndicatorShown(false);
    m_model->setPreview(std::move(preview), std::move(compared), chosen.existingByNumber);
}

/// Keeps the window painted while a large source is read, and lets the user stop it.
bool frmImportPb::advance(qsizetype done, qsizetype total)
{
    if (done < m_lastDone) // the rows are made, and are counted anew
        m_sta->setText(u"Vergleiche vorhandene Kontakte..."_s);
    m_lastDone = done;
    const qint64 elapsed = m_building.elapsed();
    if (elapsed < patience || elapsed - m_lastYield < betweenYields)
        return true;
    m_lastYield = elapsed;
    if (!m_sta->isBusy()) {
        m_sta->offerCancel(true);
        m_sta->SetBusy(true);
    }
    const toolkit::Progress progress = m_sta->progress();
    progress.start(static_cast<int>(done), static_cast<int>(std::max(done, total)));
    m_program.context.clock.DoEvents();
    return !progress.cancelled() && !m_closeWanted;
}

bool frmImportPb::isCompared() const
{
    return m_lists.store ? m_lists.store->isListKnown() : m_lists.isPhonebookRead;
}

/// The rows that will be imported although a search hides them.
int frmImportPb::hiddenChecked() const
{
    int count = 0;
    for (int row = 0; row < m_model->rowCount(); ++row)
        count += m_view->isRowHidden(row, {}) && m_model->preview().rows[static_cast<size_t>(row)].checked;
    return count;
}

/// Enter imports as long as anything is checked.
void frmImportPb::showCounts()
{
    const transfer::Preview& preview = m_model->preview();
    if (preview.checkedCount() > 0)
        m_cmdImport->setDefault(true);
    const int existing = preview.existingCount();
    QString text = u"%1 von %2 zum Import ausgewählt"_s.arg(preview.checkedCount()).arg(preview.rows.size());
    if (const int hidden = hiddenChecked(); hidden > 0)
        text += u" (%1 davon ausgeblendet)"_s.arg(hidden);
    if (existing > 0)
        text += u", %1 schon vorhanden"_s.arg(existing);
    if (m_chkMark0->isChecked() && !isCompared())
        text += u", nicht mit dem Telefonbuch verglichen"_s;
    if (m_isUnread)
        text = u"Die Datei kann nicht mehr gelesen werden."_s;
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

/// Changes the checks of the rows that are shown. Rows that a search hides keep theirs.
void frmImportPb::checkShown(void (*check)(transfer::Preview&))
{
    m_model->change([&](transfer::Preview& preview) {
        const std::vector<transfer::PreviewRow> before = preview.rows;
        check(preview);
        for (size_t row = 0; row < before.size(); ++row) {
            if (m_view->isRowHidden(static_cast<int>(row), {}))
                preview.rows[row].checked = before[row].checked;
        }
    });
}

void frmImportPb::cmdSelAll_Click()
{
    checkShown(transfer::selectAll);
}

void frmImportPb::cmdSelNon_Click()
{
    checkShown(transfer::selectNone);
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

} // namespace kalmo::ui
