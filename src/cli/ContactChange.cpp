#include "cli/ContactChange.h"

#include "cli/CauseWords.h"
#include "cli/ContactWords.h"
#include "cli/DataWork.h"
#include "cli/FileWords.h"
#include "cli/FindPhone.h"
#include "cli/ReadContacts.h"
#include "cli/SavedListWords.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "operations/ContactFields.h"

#include <QJsonArray>

namespace kalmo::cli {

using operations::Cause;
using operations::ContactEdit;
using operations::ContactOutcome;
using operations::Contacts;
using operations::Outcome;
using operations::SavedKind;
using operations::SavedList;
using phonedata::tVcfEntry;

namespace {

const QString readAgain = u"read the phonebook before you go on"_s;

operations::ContactPolicy commandPolicy()
{
    return {.readsAgain = true, .checksRoom = true, .backup = operations::ContactPolicy::Backup::Json};
}

/// Reports a reading that no change can be built on.
ExitStatus reportReading(Job& job, const ContactEdit& edit, Cause cause)
{
    if (cause == Cause::Doubtful) {
        job.out.error(u"could not read the whole phonebook: %1, in the second reading too.\n"
                      u"Nothing was changed in the phone."_s.arg(countDoubt(edit.held())));
        return ExitFailed;
    }
    if (!job.stop.Checked())
        job.out.error(u"could not read the phonebook. Nothing was changed in the phone."_s);
    return brokenOff(job);
}

QString reasonOf(Job& job, const ContactOutcome& outcome)
{
    const QString who = printable(outcome.refusedFor);
    const QString unconfirmed = u"not all of them were confirmed"_s;
    return causeInWords(outcome.facts.cause, job.portName(),
                        {{Cause::None, unconfirmed},
                         {Cause::Doubtful, unconfirmed},
                         {Cause::PhoneRefused,
                          who.isEmpty() ? u"the phone refused it"_s : u"the phone refused %1"_s.arg(who)},
                         {Cause::NoAnswer, who.isEmpty() ? u"the phone did not answer"_s
                                                         : u"the phone did not confirm %1"_s.arg(who)},
                         {Cause::Mismatch, u"the phone does not hold them as they were sent"_s}});
}

QJsonArray luidsJson(const QStringList& luids)
{
    QJsonArray array;
    for (const QString& luid : luids)
        array.append(phonedata::isNoValidLuid(luid) ? QJsonValue() : QJsonValue(luid));
    return array;
}

/// "2 entries written: 0012 0013"
QString doneText(const ContactCommand& command, const ContactOutcome& outcome)
{
    QStringList known;
    for (const QString& luid : outcome.luids) {
        if (!phonedata::isNoValidLuid(luid))
            known.append(printable(luid));
    }
    const QString which = known.isEmpty() ? QString() : u": "_s + known.join(u' ');
    const auto count = static_cast<size_t>(outcome.facts.confirmed);
    return count == 0 ? QString() : u"%1 %2%3\n"_s.arg(entryCount(count), command.verb, which);
}

/// Contacts that were written and are held otherwise.
QString mismatchText(const ContactOutcome& outcome)
{
    std::vector<QStringList> rows;
    for (const auto& [written, held] : outcome.mismatches) {
        rows.push_back(QStringList{u"written"_s} + contactCells(written));
        rows.push_back(QStringList{u"  holds"_s} + contactCells(held));
    }
    return rows.empty() ? QString() : alignedTable(QStringList{QString()} + contactHeadings(), rows);
}

/// A line for each warning about a contact.
QString linesAbout(const tVcfEntry& contact, const QStringList& warnings)
{
    QString text;
    for (const QString& warning : warnings)
        text += u"%1: %2\n"_s.arg(printable(operations::contactName(contact)), printable(warning));
    return text;
}

/// Returns true if only contacts differ that were warned of.
bool differsAsWarned(const ContactOutcome& outcome)
{
    return outcome.facts.cause == Cause::Mismatch && !outcome.mismatches.empty() &&
           std::all_of(outcome.mismatches.begin(), outcome.mismatches.end(),
                       [](const auto& pair) { return !warningsAbout(pair.first).isEmpty(); });
}

} // namespace

QJsonObject commonJson(const Outcome& facts, std::optional<int> verified)
{
    return {{u"backup"_s, facts.savedIn.isEmpty() ? QJsonValue() : QJsonValue(facts.savedIn)},
            {u"verified"_s, verified ? QJsonValue(*verified) : QJsonValue()},
            {u"state"_s, operations::wordOf(facts.state)}};
}

ExitStatus statusOf(const Outcome& facts)
{
    if (facts.isDone() && facts.verified)
        return ExitDone;
    return facts.cause == Cause::Interrupted ? ExitRefused : ExitFailed;
}

QString failureText(Job& job, const ContactCommand& command, const ContactOutcome& outcome)
{
    const Outcome& facts = outcome.facts;
    if (facts.cause == Cause::NotSaved)
        return u"could not save what the phone holds: %1.\nNothing was changed in the phone."_s.arg(
            saveFaultInWords(facts.saveFault));
    if (facts.cause == Cause::NoRoom)
        return u"the phone has no room for all of them. Nothing was changed in it."_s;
    if (outcome.hasChangedMeanwhile)
        return u"could not change the contacts: the phonebook in the phone has changed since it was read.\n"
               u"Nothing was changed in the phone."_s;
    const QString counted = u"%1 of %2 %3"_s.arg(
        QString::number(facts.confirmed), entryCount(static_cast<size_t>(facts.planned)), command.verb);
    QString text = u"could not change all contacts: %1. %2"_s.arg(reasonOf(job, outcome), counted);
    if (facts.isDone())
        text = counted + u", but not read back to be compared"_s;
    if (facts.unknown > 0)
        text += u"; of one more it is not known, so "_s + readAgain;
    text += u".\n"_s + mismatchText(outcome);
    if (!facts.savedIn.isEmpty())
        text += u"The phonebook as it was before is in %1.\n"_s.arg(facts.savedIn);
    if (!facts.recordId.isEmpty() && facts.state != operations::State::Unchanged)
        text += u"To put it back: %1.\n"_s.arg(job.invocation.again(u"undo "_s + facts.recordId));
    return text.chopped(1);
}

ExitStatus reportContacts(Job& job, const ContactCommand& command, const ContactOutcome& outcome,
                          QJsonObject json)
{
    const Outcome& facts = outcome.facts;
    if (facts.cause == Cause::NoRoom || facts.cause == Cause::NotSaved) {
        job.out.error(failureText(job, command, outcome));
        return ExitFailed;
    }
    const QJsonObject common = commonJson(facts, facts.verified);
    for (auto fact = common.begin(); fact != common.end(); ++fact)
        json[fact.key()] = fact.value();
    json[command.verb] = facts.confirmed;
    json[u"luids"_s] = luidsJson(outcome.luids);
    job.out.show(json, doneText(command, outcome));
    if (differsAsWarned(outcome)) {
        job.out.note(u"The phone holds this otherwise, as was warned:\n"_s + mismatchText(outcome));
        return ExitDone;
    }
    if (!facts.isDone() || !facts.verified)
        job.out.error(failureText(job, command, outcome));
    return statusOf(facts);
}

ExitStatus changeContacts(Job& job, const ContactCommand& command, const MakePlan& makePlan,
                          const Report& report)
{
    const ExitStatus found = findPhone(job, vcardHandset, u"for contacts"_s);
    return found == ExitDone ? changeContactsOfFound(job, command, makePlan, report) : found;
}

ExitStatus changeContactsOfFound(Job& job, const ContactCommand& command, const MakePlan& makePlan,
                                 const Report& report)
{
    return withClient(job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        const auto list = phonedata::makeVcfRows();
        const auto store = std::make_shared<phonedata::VcardStore>(client, *list);
        ContactEdit edit(store, commandPolicy(), {.bar = &job.progress, .cancel = &job.stop});
        job.progress.phase(u"Reading the phonebook"_s);
        const Outcome ready = edit.begin();
        job.progress.clear();
        if (!ready.isDone())
            return reportReading(job, edit, ready.cause);
        ExitStatus status = ExitDone;
        const auto plan = makePlan(edit, status);
        if (!plan)
            return status;
        job.progress.phase(u"Changing the phonebook"_s);
        const ContactOutcome outcome = edit.apply(*plan, command.cause);
        edit.end();
        job.progress.clear();
        if (outcome.facts.isRecordOpen)
            job.out.note(openRecordText());
        return report(edit, outcome);
    });
}

ExitStatus changeContacts(Job& job, const ContactCommand& command, const MakePlan& makePlan)
{
    return changeContacts(job, command, makePlan, [&](const ContactEdit&, const ContactOutcome& outcome) {
        return reportContacts(job, command, outcome);
    });
}

bool requireRoom(Job& job, const ContactEdit& edit, const operations::ContactPlan& plan)
{
    const auto room = edit.freePlaces();
    if (plan.add.empty() || (room && plan.fits(*room)))
        return true;
    const size_t places = static_cast<size_t>(std::max(room.value_or(0), 0)) + plan.remove.size();
    const QString after = plan.remove.empty() ? QString() : u" more once those are removed"_s;
    job.out.error(
        room ? u"the phone has room for %1%2; nothing was changed in it."_s.arg(entryCount(places), after)
             : u"the phone does not say how much room it has; nothing was changed in it."_s);
    return false;
}

std::optional<SavedList> readContacts(Job& job, const QString& path)
{
    operations::SavedListFault fault;
    auto list = operations::readSavedList(path, SavedKind::Contacts, {}, fault);
    return acceptContacts(job, path, std::move(list), fault);
}

std::optional<SavedList> acceptContacts(Job& job, const QString& path, std::optional<SavedList> list,
                                        operations::SavedListFault fault)
{
    if (list && list->contacts.empty())
        fault.kind = operations::FileFault::NothingInIt;
    if (!list || list->contacts.empty()) {
        job.out.error(inWords(fault, path, SavedKind::Contacts) + u'.');
        return std::nullopt;
    }
    const size_t passedOver = std::erase_if(list->contacts, operations::holdsNothing);
    if (list->contacts.empty()) {
        job.out.error(u"%1: there is nothing in it but empty contacts."_s.arg(path));
        return std::nullopt;
    }
    if (passedOver != 0)
        job.out.note(u"%1 without anything in it passed over.\n"_s.arg(entryCount(passedOver)));
    return list;
}

QString warningLines(const Contacts& contacts)
{
    QString text;
    for (const tVcfEntry& contact : contacts)
        text += linesAbout(contact, warningsAbout(contact));
    return text;
}

QString heldLines(const operations::ContactPlan& plan, const phonedata::ContactReading& held)
{
    QString text;
    for (const operations::ContactPlan::Change& change : plan.change) {
        const tVcfEntry& contact = change.to.entry;
        if (const phonedata::ContactCard* card = held.cards.find(contact.luid))
            text += linesAbout(contact, warningsAboutHeld(contact, *card));
    }
    return text;
}

QString droppedLines(const QString& path, const SavedList& list)
{
    if (list.dropped.isEmpty())
        return {};
    return u"%1: there is no field for these lines, so they are not written: %2\n"_s.arg(
        path, printable(list.dropped.join(u", "_s)));
}

bool confirmWarnings(Job& job, const QString& warnings)
{
    if (!job.questions.someoneIsThere() && job.questions.canBeAnswered())
        job.out.note(warnings);
    return warnings.isEmpty() ||
           job.questions.confirm(warnings + u"The phone may cut or refuse this. Write all the same?"_s);
}

} // namespace kalmo::cli
