// Lists of the phone, or saved ones, as files for other programs.

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "cli/Commands.h"
#include "cli/ExportOrder.h"
#include "cli/FindPhone.h"
#include "cli/OutputFile.h"
#include "cli/ReadContacts.h"
#include "cli/ReadList.h"
#include "cli/SavedListWords.h"
#include "cli/StoreWords.h"
#include "link/PhoneModels.h"
#include "operations/ContactFields.h"
#include "operations/ContactPlan.h"
#include "transfer/export/DocxTarget.h"
#include "transfer/export/Exporter.h"
#include "transfer/export/ExportFile.h"
#include "transfer/export/VcfTarget.h"
#include "transfer/export/XlsxTarget.h"

#include <QJsonObject>

namespace kalmo::cli {

using operations::SavedKind;
using operations::SavedList;
using operations::SavedListFault;
using phonedata::Store;

namespace {

/// The list that is exported, and the reason for which some of it may be missing or garbled.
struct ExportList
{
    SavedList list = {};
    QString doubt = {};
};

/// Reads a saved list. A .json file holds either kind of phonebook; its keys tell which.
std::optional<SavedList> readSaved(Job& job, const QString& path, Store store)
{
    const SavedKind kind = operations::savedKind(store);
    SavedListFault fault;
    if (auto list = operations::readSavedList(path, kind, {}, fault))
        return list;
    if (store == Store::Phonebook && operations::findFormat(path, SavedKind::Contacts)) {
        SavedListFault other;
        if (auto contacts = operations::readSavedList(path, SavedKind::Contacts, {}, other))
            return contacts;
        if (other.kind != operations::FileFault::UnknownKey) {
            job.out.error(inWords(other, path, SavedKind::Contacts) + u'.');
            return {};
        }
    }
    job.out.error(inWords(fault, path, kind) + u'.');
    return {};
}

ExitStatus readEntries(Job& job, Store store, ExportList& source)
{
    ListRead read;
    const ExitStatus status = readList(job, store, read);
    source.list = {.kind = operations::savedKind(store), .entries = read.entries};
    if (read.isDoubtful)
        source.doubt = read.doubt;
    return status;
}

ExitStatus readContacts(Job& job, ExportList& source)
{
    std::optional<phonedata::ContactReading> reading;
    const ExitStatus status = readPhoneContacts(job, reading);
    if (status != ExitDone)
        return status;
    source.list = {.kind = SavedKind::Contacts, .contacts = operations::contactsOf(*reading)};
    if (!reading->isConfirmed())
        source.doubt = countDoubt(*reading) + u", in the second reading too"_s;
    return ExitDone;
}

ExitStatus readPhone(Job& job, Store store, ExportList& source)
{
    if (const ExitStatus found = findPhone(job); found != ExitDone)
        return found;
    return link::isClassic(job.phoneType()) ? readEntries(job, store, source) : readContacts(job, source);
}

/// The list as the window shows it.
std::unique_ptr<toolkit::ListRows> rowsOf(const SavedList& list)
{
    auto rows = list.kind == SavedKind::Contacts    ? phonedata::makeVcfRows()
                : list.kind == SavedKind::Providers ? phonedata::makeProviderRows()
                                                    : phonedata::makePhonebookRows();
    std::vector<toolkit::ListRow> made;
    for (const phonedata::tVcfEntry& contact : list.contacts)
        made.push_back(phonedata::toRow(operations::withLongDay(contact)));
    for (const phonedata::ClassicEntry& entry : list.entries)
        made.push_back(list.kind == SavedKind::Providers
                           ? phonedata::toRow(phonedata::ProviderEntry{entry.name, entry.number})
                           : phonedata::toRow(entry));
    rows->addAll(std::move(made));
    return rows;
}

/// One run of an export command.
class ExportCommand
{
public:
    ExportCommand(Job& job, Store store, ExportOrder order)
        : m_job(job), m_store(store), m_order(std::move(order))
    {
    }

    ExitStatus run();

private:
    ExitStatus fail(ExitStatus status, const QString& reason)
    {
        m_job.out.error(reason + u'.');
        return status;
    }
    ExitStatus read();
    bool choose(QString& error);
    ExitStatus write();
    std::optional<QByteArray> content();
    QString title() const { return m_store == Store::Phonebook ? u"Telefonbuch"_s : u"Providerliste"_s; }
    QString scratch() const { return app::workPath(m_job.context.sy); }

    Job& m_job;
    Store m_store;
    ExportOrder m_order;
    ExportList m_source;
    std::unique_ptr<toolkit::ListRows> m_rows;
    transfer::ExportChoice m_choice;
    qsizetype m_lostLetters = 0;
};

ExitStatus ExportCommand::run()
{
    if (!canWriteFile(m_job, m_order.path))
        return ExitFailed;
    if (!m_order.from.isEmpty()) { // a saved list is looked at before anything is asked
        if (const ExitStatus status = read(); status != ExitDone)
            return status;
    }
    if (!m_order.mayOverwrite && !transfer::mayOverwrite(m_job.context, m_order.path))
        return ExitRefused;
    if (m_order.from.isEmpty()) {
        if (const ExitStatus status = read(); status != ExitDone)
            return status;
    }
    return write();
}

ExitStatus ExportCommand::read()
{
    const bool isSaved = !m_order.from.isEmpty();
    if (isSaved) {
        const auto list = readSaved(m_job, m_order.from, m_store);
        if (!list)
            return ExitWrongUse;
        m_source.list = *list;
    } else if (const ExitStatus status = readPhone(m_job, m_store, m_source); status != ExitDone) {
        return status;
    }
    if (m_source.list.count() == 0)
        return fail(isSaved ? ExitWrongUse : ExitFailed, u"the list holds no entries to export"_s);
    m_rows = rowsOf(m_source.list);
    QString error;
    return choose(error) ? ExitDone : fail(ExitWrongUse, error);
}

bool ExportCommand::choose(QString& error)
{
    transfer::ExportSource source{*m_rows, title()};
    if (m_source.list.kind == SavedKind::Contacts)
        source.hiddenColumns = {phonedata::VcfLuid};
    const QList<int> offered = source.offeredColumns();
    const auto columns = m_order.columns ? columnsByHeading(*m_rows, offered, *m_order.columns, error)
                                         : std::optional(offered);
    if (!columns || (m_order.rows && !selectRows(*m_rows, *m_order.rows, error)))
        return false;
    m_choice = {*columns, m_order.rows.has_value(), m_order.useHeader, m_order.addEmptyLine};
    return true;
}

ExitStatus ExportCommand::write()
{
    if (!m_source.doubt.isEmpty() && app::FileExists(m_order.path))
        return fail(ExitFailed, m_source.doubt +
                                    u".\nThe older file %1 was not replaced. Read again"_s.arg(m_order.path));
    if (!transfer::writeExportFile(m_job.context, {m_order.path, u"Export"_s, m_rows->name()},
                                   [this] { return content(); }))
        return ExitFailed;
    if (m_lostLetters > 0)
        m_job.context.dialogs.Show(transfer::lostLetters(m_lostLetters));
    const qsizetype rows = m_choice.onlySelected ? m_rows->selectedRows().size() : m_rows->count();
    const QJsonObject json{
        {u"rows"_s, rows}, {u"columns"_s, m_choice.columns.size()}, {u"file"_s, m_order.path}};
    m_job.out.show(json, u"%1 exported to %2.\n"_s.arg(entryCount(static_cast<size_t>(rows)), m_order.path));
    return m_source.doubt.isEmpty() ? ExitDone : fail(ExitFailed, m_source.doubt + u". Read again"_s);
}

std::optional<QByteArray> ExportCommand::content()
{
    const auto table = [this] { return transfer::makeExportTable(*m_rows, m_choice); };
    const auto ansiTable = [&] {
        const transfer::ExportTable made = table();
        m_lostLetters = made.lettersBeyondCodePage();
        return made;
    };
    switch (m_order.kind) {
    case ExportKind::Csv:
        return transfer::csvBytes(ansiTable(), m_order.separator, m_order.replacement);
    case ExportKind::Vcf:
        return transfer::vcfBytes(*m_rows, m_choice);
    case ExportKind::Html:
        return transfer::htmlPage(m_job.context, m_order.templatePath, m_order.path, title(), ansiTable);
    case ExportKind::Xlsx: {
        const auto book = transfer::xlsxWorkbook(table(), {title(), m_order.fitsWidths}, scratch());
        if (book.error == 0)
            return book.bytes;
        m_job.out.error(u"could not make the workbook: %1."_s.arg(book.reason));
        return {};
    }
    case ExportKind::Docx:
        if (auto document = transfer::docxBytes(table(), {title(), m_order.fitsWidths}))
            return document;
        m_job.out.error(u"could not make the document."_s);
        return {};
    }
    return {};
}

ExitStatus runExport(Job& job, Store store)
{
    QString error;
    const auto order = exportOrder(job, error);
    if (order)
        return ExportCommand(job, store, *order).run();
    job.out.error(error + u'.');
    return ExitWrongUse;
}

} // namespace

ExitStatus runPhonebookExport(Job& job)
{
    return runExport(job, Store::Phonebook);
}

ExitStatus runProvidersExport(Job& job)
{
    return runExport(job, Store::Providers);
}

} // namespace kalmo::cli
