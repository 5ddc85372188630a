#include "cli/WriteList.h"

#include "cli/CauseWords.h"
#include "cli/EntryWarnings.h"
#include "cli/FileWords.h"
#include "cli/ReadList.h"
#include "cli/SavedListWords.h"
#include "cli/Stop.h"
#include "cli/StoreWords.h"
#include "cli/WriteReport.h"

#include <QJsonObject>

namespace kalmo::cli {

using operations::Cause;
using operations::ListOutcome;
using operations::ListPlan;
using operations::Outcome;
using phonedata::Store;

namespace {

/// One run of a command that writes a list.
class ListWriter
{
public:
    ListWriter(Job& job, Store store)
        : m_job(job), m_store(store), m_words(wordsOf(store)), m_list(listJob(job, store))
    {
        m_policy.reading = readPolicy;
    }

    ExitStatus run(operations::Entries wanted, PhoneState phone);
    ExitStatus append(operations::Entries extra, int skipped);

private:
    ExitStatus replace();
    bool saveHeld();
    bool agreesToDoubt();
    bool agrees();
    ExitStatus tellUnchanged();
    ExitStatus report(const ListOutcome& result);
    ExitStatus reportConfirmed(const ListOutcome& result);
    ExitStatus reportFailure(const ListOutcome& result);
    WriteFailure failureOf(const ListOutcome& result) const
    {
        return {m_job.invocation, m_words, result, m_job.portName(), backup()};
    }
    QString unsure() const;
    QString differences() const;
    ExitStatus fail(ExitStatus status, const QString& text)
    {
        m_job.out.error(text);
        return status;
    }
    void show(const Outcome& outcome, const QString& text = {}, bool isErased = true);
    ExitStatus tellUnread();
    QString backup() const { return m_plan.savedIn.isEmpty() ? QString() : m_plan.savedIn.last(); }
    QString wantedCount() const { return entryCount(m_plan.given.size()); }

    Job& m_job;
    Store m_store;
    const StoreWords& m_words;
    operations::ListJob m_list;
    operations::WritePolicy m_policy;
    operations::Entries m_fromFile;
    ListPlan m_plan;
    std::optional<int> m_skipped; // rows of a file that an import leaves out
};

ExitStatus ListWriter::run(operations::Entries wanted, PhoneState phone)
{
    const bool dryRun = m_job.invocation.has(u"--dry-run"_s);
    m_fromFile = std::move(wanted);
    if (!dryRun && !m_job.questions.canBeAnswered()) {
        m_job.questions.tellUnanswered(u"Replace the %1 in the phone?"_s.arg(m_words.name));
        return ExitRefused;
    }
    const ExitStatus found =
        phone == PhoneState::Found ? ExitDone : findPhone(m_job, classicHandset, u"for such entries"_s);
    if (found != ExitDone)
        return found;
    {
        const StoreOpenScope open;
        m_plan = operations::planReplace(m_list, m_fromFile, m_policy);
    }
    m_job.progress.clear();
    if (m_plan.reading.cause != Cause::None)
        return tellUnread();
    if (!dryRun)
        return replace();
    m_job.out.note(warningLines(m_plan));
    m_job.out.show(diffJson(countsOf(m_plan.diff, m_plan.held.entries.size())), differences());
    return m_plan.isDoubtful() ? fail(ExitFailed, unsure() + u'.') : ExitDone;
}

/// Adds entries to the list of a phone that has been found.
ExitStatus ListWriter::append(operations::Entries extra, int skipped)
{
    m_skipped = skipped;
    m_policy.recordCause = operations::RecordCause::Import;
    m_policy.trustsReading = true;
    {
        const StoreOpenScope open;
        m_plan = operations::planAppend(m_list, std::move(extra), m_policy);
    }
    m_job.progress.clear();
    return m_plan.reading.cause == Cause::None ? replace() : tellUnread();
}

ExitStatus ListWriter::tellUnread()
{
    const ExitStatus status = tellReadFailure(m_job, m_store, m_plan.reading);
    m_job.out.note(u"Nothing was changed in the phone.\n"_s);
    return status;
}

/// Shows the result. `text` is empty if an error was reported.
void ListWriter::show(const Outcome& outcome, const QString& text, bool isErased)
{
    QJsonObject json = resultJson(outcome, isErased, backup()).toObject();
    if (!m_skipped) {
        m_job.out.show(json, text);
        return;
    }
    // The phone's own entries go back before the new ones.
    const int imported = std::max(outcome.confirmed - static_cast<int>(m_plan.held.entries.size()), 0);
    json[u"imported"_s] = isErased ? QJsonValue(imported) : QJsonValue();
    json[u"skipped"_s] = *m_skipped;
    const QString counts = u"%1 imported, %2 skipped.\n"_s.arg(entryCount(static_cast<size_t>(imported)),
                                                               QString::number(*m_skipped));
    m_job.out.show(json, text.isEmpty() ? text : counts + text);
}

ExitStatus ListWriter::replace()
{
    if (m_plan.changesNothing) {
        const bool isSame = m_plan.held.entries == m_fromFile;
        const phonedata::ListDiff fromFile = phonedata::diffLists(m_plan.held.entries, m_fromFile);
        const auto different = fromFile.add.size() + fromFile.change.size();
        show({.state = operations::State::Unchanged,
              .verified = static_cast<int>(m_plan.given.size() - different)},
             isSame ? nothingToWrite()
                    : u"The phone already holds these entries as far as it can; nothing was written.\n"_s);
        return ExitDone;
    }
    if (m_plan.isDoubtful() && !agreesToDoubt())
        return fail(ExitFailed, unsure() + u".\nNothing was changed in the phone."_s);
    if (!saveHeld())
        return ExitFailed;
    if (!m_skipped) // of an import the preview has been shown
        m_job.out.note(differences());
    if (!agrees() || m_job.stop.Checked())
        return tellUnchanged();
    ListOutcome result;
    {
        const StoreOpenScope open;
        result = operations::applyPlan(m_list, m_plan, m_policy);
    }
    m_job.progress.clear();
    return report(result);
}

ExitStatus ListWriter::tellUnchanged()
{
    QString text = u"nothing was changed in the phone."_s;
    if (m_job.stop.Checked())
        text.prepend(u"interrupted; "_s);
    if (!backup().isEmpty())
        text += u"\nWhat it holds is saved in %1."_s.arg(backup());
    m_job.out.error(text);
    show({.state = operations::State::Unchanged});
    return ExitRefused;
}

bool ListWriter::saveHeld()
{
    Outcome outcome;
    if (!operations::saveHeld(m_list, m_plan, m_policy, outcome)) {
        m_job.out.error(
            u"could not save what the phone holds in %1: %2.\n"
            u"Nothing was changed in the phone."_s.arg(outcome.savedIn, saveFaultInWords(outcome.saveFault)));
        return false;
    }
    if (!backup().isEmpty())
        m_job.out.note(u"What the phone holds is saved in %1.\n"_s.arg(backup()));
    return true;
}

/// Only a person may agree: a backup that lacks an entry is none.
bool ListWriter::agreesToDoubt()
{
    m_policy.mayUseDoubtful =
        m_job.questions.someoneIsThere() &&
        m_job.questions.confirm(
            m_plan.held.lacksOnlyMelodies
                ? u"The names of the handset's own melodies could not be read, so the backup may name "
                  u"others. "
                  u"Write all the same?"_s
                : u"The line was disturbed in both readings, so the backup may lack an entry. Write all the "
                  u"same?"_s);
    return m_policy.mayUseDoubtful;
}

QString ListWriter::unsure() const
{
    return u"could not read the %1 for sure: %2"_s.arg(m_words.name, doubtInWords(m_plan.held));
}

QString ListWriter::differences() const
{
    const QString text = diffText(m_plan.diff, m_plan.held.entries.size(), m_store);
    return m_plan.isReordered ? text + u"The order of the entries changes.\n"_s : text;
}

bool ListWriter::agrees()
{
    Questions& questions = m_job.questions;
    const QString warnings = warningLines(m_plan);
    // A question needs its subject on the screen, also with --quiet.
    if (questions.someoneIsThere())
        m_job.out.prompt(warnings);
    else
        m_job.out.note(warnings);
    if (!warnings.isEmpty() &&
        !questions.confirm(
            u"The phone may change an entry that it can't hold, or refuse it, and then lacks those after "
            u"it too. Write all the same?"_s))
        return false;
    return questions.confirm(writeQuestion(wantedCount(), countsOf(m_plan.diff, m_plan.held.entries.size())));
}

ExitStatus ListWriter::report(const ListOutcome& result)
{
    const Outcome& outcome = result.outcome;
    if (result.sentNothing() && outcome.cause == Cause::NotSaved)
        return fail(ExitFailed,
                    u"could not record what the phone holds: %1.\n"
                    u"Nothing was changed in the phone."_s.arg(saveFaultInWords(outcome.saveFault)));
    if (result.sentNothing() && outcome.cause == Cause::Interrupted)
        return tellUnchanged();
    if (outcome.isRecordOpen)
        m_job.out.note(openRecordText());
    return result.isConfirmed() ? reportConfirmed(result) : reportFailure(result);
}

ExitStatus ListWriter::reportConfirmed(const ListOutcome& result)
{
    const Outcome& outcome = result.outcome;
    if (outcome.cause == Cause::Mismatch) {
        m_job.out.error(u"the phone does not hold what was written. This differs:\n"_s +
                        mismatchText(result.mismatch, m_store) +
                        backupHint(m_job.invocation, m_words, backup()));
    } else if (!outcome.isDone()) {
        m_job.out.error(notReadBackText(failureOf(result)) + backupHint(m_job.invocation, m_words, backup()));
    } else if (outcome.verified == outcome.planned) {
        show(outcome, foundRight(wantedCount()));
        return ExitDone;
    } else {
        const int different = outcome.planned - outcome.verified.value_or(0);
        show(outcome, u"%1 written and read back. Not as in the file, as was warned: %2.\n"_s.arg(
                          wantedCount(), entryCount(static_cast<size_t>(different))));
        return ExitDone;
    }
    show(outcome);
    return outcome.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

ExitStatus ListWriter::reportFailure(const ListOutcome& result)
{
    m_job.out.error(failureText(failureOf(result)));
    const bool isUnchanged = result.outcome.state == operations::State::Unchanged;
    show(result.outcome, {}, result.isErased || isUnchanged);
    return result.outcome.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

} // namespace

ExitStatus runWrite(Job& job, Store store)
{
    const QString path = job.invocation.arguments.first();
    const operations::SavedKind kind = operations::savedKind(store);
    operations::SavedListFault fault;
    auto list = operations::readSavedList(path, kind, {}, fault);
    if (list)
        return writeEntries(job, store, std::move(list->entries), PhoneState::ToFind);
    job.out.error(inWords(fault, path, kind) + u'.');
    return ExitWrongUse;
}

ExitStatus writeEntries(Job& job, Store store, operations::Entries wanted, PhoneState phone)
{
    return ListWriter(job, store).run(std::move(wanted), phone);
}

ExitStatus appendEntries(Job& job, Store store, operations::Entries extra, int skipped)
{
    return ListWriter(job, store).append(std::move(extra), skipped);
}

} // namespace kalmo::cli
