// Imports of files into the lists of the phone.

#include "cli/Commands.h"
#include "cli/ContactChange.h"
#include "cli/FindPhone.h"
#include "cli/ImportWork.h"
#include "cli/ReadList.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "cli/WriteList.h"
#include "link/PhoneModels.h"
#include "operations/ContactFields.h"
#include "transfer/import/ImportSteps.h"

#include <algorithm>

namespace kalmo::cli {

using operations::ContactEdit;
using operations::ContactPlan;
using operations::Contacts;
using phonedata::Store;
using transfer::ClassicStep;
using transfer::Shape;

namespace {

/// A line for each text that is cut to the length of its field.
QString cutLines(const transfer::Preview& preview)
{
    QString text;
    const auto fields = transfer::fieldsOf(preview.shape);
    for (const transfer::PreviewRow& row : preview.rows) {
        for (size_t field = 0; row.checked && field < fields.size(); ++field) {
            if (row.colours[field] == transfer::Colour::Red)
                text += u"\"%1\" will be cut to %2 characters\n"_s.arg(
                    printable(row.cells[field]), QString::number(fields[field].longest));
        }
    }
    return text;
}

operations::Entries entriesFor(Store store, const transfer::Preview& preview)
{
    if (store == Store::Phonebook)
        return transfer::checkedEntries(preview);
    operations::Entries entries;
    for (const phonedata::ProviderEntry& provider : transfer::checkedProviders(preview))
        entries.push_back({.name = provider.name, .number = provider.number});
    return entries;
}

/// One run of a command that imports.
class ImportCommand
{
public:
    ImportCommand(Job& job, Store store)
        : m_job(job), m_store(store), m_path(job.invocation.arguments.first()),
          m_isDryRun(job.invocation.has(u"--dry-run"_s))
    {
    }

    ExitStatus run();

private:
    bool readFile(Shape shape);
    ExitStatus importEntries();
    ExitStatus importContacts();
    std::optional<ContactPlan> planContacts(const ContactEdit& edit, ExitStatus& status);
    std::optional<ContactPlan> askAbout(ContactPlan plan);
    ExitStatus compare(const transfer::ExistingEntries& existing);
    ExitStatus takeStep(ClassicStep step);
    ExitStatus showDryRun();
    ExitStatus showNothing();
    ExitStatus refuse(const QString& reason)
    {
        m_job.out.error(u"could not import %1: %2."_s.arg(m_path, reason));
        return ExitWrongUse;
    }
    int tooLong() const;
    int skipped() const { return static_cast<int>(m_preview.rows.size()) - m_preview.checkedCount(); }

    Job& m_job;
    Store m_store;
    QString m_path;
    bool m_isDryRun;
    ImportWork m_work;
    transfer::Preview m_preview;
};

ExitStatus ImportCommand::run()
{
    if (!m_isDryRun && !m_job.questions.canBeAnswered()) {
        m_job.questions.tellUnanswered(u"Import into the %1 of the phone?"_s.arg(wordsOf(m_store).name));
        return ExitRefused;
    }
    // The form of a phonebook is known once the phone is.
    if (m_store == Store::Providers && !readFile(Shape::Classic))
        return ExitWrongUse;
    if (const ExitStatus found = findPhone(m_job); found != ExitDone)
        return found;
    const Shape shape = link::isClassic(m_job.phoneType()) ? Shape::Classic : Shape::Vcard;
    if (m_store == Store::Phonebook && !readFile(shape))
        return ExitWrongUse;
    return shape == Shape::Classic ? importEntries() : importContacts();
}

bool ImportCommand::readFile(Shape shape)
{
    auto work = importWork(m_job, m_path, shape);
    if (!work)
        return false;
    m_work = std::move(*work);
    const bool saysYes = shape == Shape::Classic && m_job.invocation.has(u"--yes"_s);
    m_work.shortensNames = m_work.shortensNames || saysYes;
    return true;
}

/// Makes the preview, and shows it. ExitDone means that no row of it keeps the import from going on.
ExitStatus ImportCommand::compare(const transfer::ExistingEntries& existing)
{
    m_preview = makePreview(m_work, existing, m_job.context.clock.Now().date(),
                            [this](qsizetype, qsizetype) { return !m_job.stop.Checked(); });
    if (m_job.reportInterruption())
        return ExitRefused;
    if (m_isDryRun)
        return showDryRun();
    // A question needs its subject on the screen, also with --quiet.
    const QString shown = hintLines(m_preview) + previewTable(m_preview);
    if (m_job.questions.someoneIsThere())
        m_job.out.prompt(shown);
    else
        m_job.out.note(shown);
    if (m_preview.checkedCount() == 0 && m_preview.existingCount() == 0)
        return refuse(tooLong() > 0 ? u"its entries are too long"_s : u"there is nothing to import in it"_s);
    if (m_preview.checkedCount() == 0)
        return ExitDone;
    return m_preview.shape == Shape::Classic ? takeStep(transfer::nextClassicStep(m_preview)) : ExitDone;
}

ExitStatus ImportCommand::takeStep(ClassicStep step)
{
    if (step == ClassicStep::NumberTooLong)
        return refuse(
            u"a number is longer than 32 characters; --skip-too-long leaves out what is too long"_s);
    if (step == ClassicStep::NameTooLong) {
        if (!m_job.questions.confirm(transfer::messageFor(step).english))
            return ExitRefused;
        transfer::shortenNames(m_preview);
    }
    return ExitDone;
}

/// Shows what the import would add, and the fault that would keep it from doing so.
ExitStatus ImportCommand::showDryRun()
{
    QJsonObject json = previewJson(m_preview);
    json[u"add"_s] = m_preview.checkedCount();
    m_job.out.show(json, previewTable(m_preview));
    m_job.out.note(hintLines(m_preview));
    const bool isClassic = m_preview.shape == Shape::Classic;
    const ClassicStep step = isClassic ? transfer::nextClassicStep(m_preview) : ClassicStep::Ready;
    return step == ClassicStep::NumberTooLong ? takeStep(step) : ExitDone;
}

ExitStatus ImportCommand::showNothing()
{
    const operations::Outcome unchanged;
    QJsonObject json = commonJson(unchanged, unchanged.verified);
    json[u"imported"_s] = 0;
    json[u"skipped"_s] = skipped();
    json[u"written"_s] = 0;
    const QString reason = tooLong() == 0
                               ? u"The phone holds these entries already"_s
                               : u"The phone holds %1 of these entries already, and %2 are too long"_s
                                     .arg(m_preview.existingCount())
                                     .arg(tooLong());
    m_job.out.show(json, reason + u"; nothing was written.\n"_s);
    return ExitDone;
}

/// Number of rows that --skip-too-long leaves out.
int ImportCommand::tooLong() const
{
    return static_cast<int>(std::ranges::count_if(m_preview.rows, [this](const transfer::PreviewRow& row) {
        return !row.checked && !row.exists && row.isComplete(m_preview.shape);
    }));
}

ExitStatus ImportCommand::importEntries()
{
    ListRead held;
    if (const ExitStatus status = readList(m_job, Store::Phonebook, held); status != ExitDone)
        return status;
    if (const ExitStatus status = compare(existingEntries(held.entries)); status != ExitDone)
        return status;
    if (held.isDoubtful && !held.lacksOnlyMelodies && (m_isDryRun || m_store == Store::Providers)) {
        m_job.out.error(
            u"the line was disturbed in both readings, so the phone may hold more of the entries."_s);
        return ExitFailed;
    }
    if (m_isDryRun)
        return ExitDone;
    return m_preview.checkedCount() == 0
               ? showNothing()
               : appendEntries(m_job, m_store, entriesFor(m_store, m_preview), skipped());
}

ExitStatus ImportCommand::importContacts()
{
    const ContactCommand command{u"written"_s, operations::RecordCause::Import};
    return changeContactsOfFound(
        m_job, command,
        [this](const ContactEdit& edit, ExitStatus& status) { return planContacts(edit, status); },
        [&](const ContactEdit&, const operations::ContactOutcome& outcome) {
            return reportContacts(m_job, command, outcome,
                                  {{u"imported"_s, outcome.facts.confirmed}, {u"skipped"_s, skipped()}});
        });
}

std::optional<ContactPlan> ImportCommand::planContacts(const ContactEdit& edit, ExitStatus& status)
{
    status = compare(existingEntries(operations::contactsOf(edit.held())));
    if (status != ExitDone)
        return std::nullopt;
    ContactPlan plan = operations::planAdd(transfer::checkedContacts(m_preview, m_job.context.log));
    if (plan.isEmpty()) {
        status = m_isDryRun ? ExitDone : showNothing();
        return std::nullopt;
    }
    if (!requireRoom(m_job, edit, plan)) {
        status = ExitFailed;
        return std::nullopt;
    }
    if (m_isDryRun)
        return std::nullopt;
    status = ExitRefused;
    return askAbout(std::move(plan));
}

std::optional<ContactPlan> ImportCommand::askAbout(ContactPlan plan)
{
    const Contacts contacts = transfer::checkedContacts(m_preview, m_job.context.log);
    const bool goesOn = confirmWarnings(m_job, cutLines(m_preview) + warningLines(contacts)) &&
                        m_job.questions.confirm(u"Add %1 to the phone (%2 skipped)?"_s.arg(
                            entryCount(contacts.size()), QString::number(skipped())));
    return goesOn ? std::optional(std::move(plan)) : std::nullopt;
}

} // namespace

ExitStatus runPhonebookImport(Job& job)
{
    return ImportCommand(job, Store::Phonebook).run();
}

ExitStatus runProvidersImport(Job& job)
{
    return ImportCommand(job, Store::Providers).run();
}

} // namespace kalmo::cli
