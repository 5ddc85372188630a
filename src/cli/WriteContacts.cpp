#include "cli/WriteContacts.h"

#include "cli/ContactWords.h"
#include "cli/DiffWords.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "operations/ContactFields.h"

namespace kalmo::cli {

using operations::ContactEdit;
using operations::ContactOutcome;
using operations::ContactPlan;
using operations::Contacts;

namespace {

const ContactCommand command{u"written"_s, operations::RecordCause::Write};

DiffCounts countsOfContacts(const ContactPlan& plan)
{
    return {.add = plan.add.size(),
            .change = plan.change.size(),
            .remove = plan.remove.size(),
            .same = static_cast<size_t>(plan.same)};
}

QString differences(const ContactPlan& plan, const DiffWords& words)
{
    std::vector<DiffRow> rows;
    for (const phonedata::ContactWrite& write : plan.add)
        rows.push_back({&DiffWords::add, contactCells(write.entry)});
    for (const ContactPlan::Change& change : plan.change) {
        rows.push_back({&DiffWords::change, contactCells(change.to.entry)});
        rows.push_back({&DiffWords::from, contactCells(change.from)});
    }
    for (const phonedata::tVcfEntry& contact : plan.remove)
        rows.push_back({&DiffWords::remove, contactCells(contact)});
    return diffTable(words, contactHeadings(), rows);
}

QString planText(const ContactPlan& plan)
{
    return differences(plan, plannedWords()) + diffLine(countsOfContacts(plan));
}

/// Warnings about the contacts that will be written.
QString warningsAboutPlan(const ContactPlan& plan, const phonedata::ContactReading& held)
{
    Contacts written;
    for (const ContactPlan::Change& change : plan.change)
        written.push_back(change.to.entry);
    for (const phonedata::ContactWrite& write : plan.add)
        written.push_back(write.entry);
    QString text = warningLines(written) + heldLines(plan, held);
    for (const phonedata::tVcfEntry& contact : plan.stuck)
        text += u"%1: the phone gives no reference for it, so it can't be removed\n"_s.arg(
            printable(operations::contactName(contact)));
    return text;
}

/// One run of the command.
class ContactWriter
{
public:
    ContactWriter(Job& job, const operations::SavedList& file)
        : m_job(job), m_file(file), m_wanted(file.contacts), m_isDryRun(job.invocation.has(u"--dry-run"_s))
    {
    }

    ExitStatus run(PhoneState phone);

private:
    std::optional<ContactPlan> plan(const ContactEdit& edit, ExitStatus& status);
    bool confirm(const ContactEdit& edit, const ContactPlan& plan, ExitStatus& status);
    ExitStatus report(const ContactEdit& edit, const ContactOutcome& outcome);
    void show(const operations::Outcome& facts, int written, std::optional<int> verified,
              const QString& text);

    Job& m_job;
    const operations::SavedList& m_file;
    const Contacts& m_wanted;
    bool m_isDryRun;
};

ExitStatus ContactWriter::run(PhoneState phone)
{
    if (!m_isDryRun && !m_job.questions.canBeAnswered()) {
        m_job.questions.tellUnanswered(u"Replace the phonebook in the phone?"_s);
        return ExitRefused;
    }
    const auto makePlan = [this](const ContactEdit& edit, ExitStatus& status) { return plan(edit, status); };
    const auto tell = [this](const ContactEdit& edit, const ContactOutcome& outcome) {
        return report(edit, outcome);
    };
    return phone == PhoneState::Found ? changeContactsOfFound(m_job, command, makePlan, tell)
                                      : changeContacts(m_job, command, makePlan, tell);
}

std::optional<ContactPlan> ContactWriter::plan(const ContactEdit& edit, ExitStatus& status)
{
    const ContactPlan plan = operations::planEqual(edit.held(), m_wanted);
    const QString warnings =
        warningsAboutPlan(plan, edit.held()) + droppedLines(m_job.invocation.arguments.first(), m_file);
    if (m_isDryRun) {
        m_job.out.note(warnings);
        m_job.out.show(diffJson(countsOfContacts(plan)), planText(plan));
        return std::nullopt;
    }
    if (plan.isEmpty())
        return plan;
    m_job.out.note(planText(plan));
    status = ExitRefused;
    if (!confirmWarnings(m_job, warnings) || !confirm(edit, plan, status))
        return std::nullopt;
    return plan;
}

bool ContactWriter::confirm(const ContactEdit& edit, const ContactPlan& plan, ExitStatus& status)
{
    if (!requireRoom(m_job, edit, plan)) {
        status = ExitFailed;
        return false;
    }
    return m_job.questions.confirm(writeQuestion(entryCount(m_wanted.size()), countsOfContacts(plan)));
}

void ContactWriter::show(const operations::Outcome& facts, int written, std::optional<int> verified,
                         const QString& text)
{
    QJsonObject json = commonJson(facts, verified);
    json[u"written"_s] = written;
    m_job.out.show(json, text);
}

ExitStatus ContactWriter::report(const ContactEdit& edit, const ContactOutcome& outcome)
{
    using operations::Cause;
    const operations::Outcome& facts = outcome.facts;
    if (facts.planned == 0) {
        const ContactPlan left = operations::planEqual(edit.held(), m_wanted);
        if (!left.stuck.empty()) {
            operations::Outcome unchanged = facts;
            unchanged.state = operations::State::Unchanged;
            show(unchanged, 0, left.same, {});
            m_job.out.error(warningsAboutPlan(left, edit.held()).chopped(1));
            return ExitFailed;
        }
        show(facts, 0, static_cast<int>(m_wanted.size()), nothingToWrite());
        return ExitDone;
    }
    if (facts.cause == Cause::NotSaved) {
        m_job.out.error(failureText(m_job, command, outcome));
        return ExitFailed;
    }
    if (!edit.heldAfter()) {
        show(facts, facts.confirmed, std::nullopt, {});
        m_job.out.error(failureText(m_job, command, outcome));
        return statusOf(facts);
    }
    const ContactPlan left = operations::planEqual(*edit.heldAfter(), m_wanted);
    if (left.isEmpty() && left.stuck.empty() && facts.isDone()) {
        show(facts, facts.confirmed, left.same, foundRight(entryCount(m_wanted.size())));
        return ExitDone;
    }
    show(facts, facts.confirmed, left.same, {});
    m_job.out.error(failureText(m_job, command, outcome) + u"\nThis differs from the file:\n"_s +
                    differences(left, {.add = u"missing"_s,
                                       .change = u"in the file"_s,
                                       .from = u"  holds"_s,
                                       .remove = u"not in the file"_s})
                        .chopped(1));
    return facts.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

} // namespace

ExitStatus writeContacts(Job& job, const operations::SavedList& file, PhoneState phone)
{
    return ContactWriter(job, file).run(phone);
}

} // namespace kalmo::cli
