// Single contacts of a vCard phonebook: added, changed, deleted.

#include "cli/Commands.h"
#include "cli/ContactChange.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "operations/ContactFields.h"

namespace kalmo::cli {

using operations::ContactEdit;
using operations::contactName;
using operations::ContactPlan;
using operations::Contacts;
using operations::LuidPlan;

namespace {

/// Reports that nobody could answer a question that the command will ask. Returns true if somebody can.
bool requireAnswers(Job& job, const QString& question)
{
    if (!job.questions.canBeAnswered())
        job.questions.tellUnanswered(question);
    return job.questions.canBeAnswered();
}

/// Reports a LUID that can't be used. Returns true if all can.
bool requireLuids(Job& job, const LuidPlan& result)
{
    if (result.missing)
        job.out.error(u"there is no contact %1 in the phone; nothing was changed in it."_s.arg(
            printable(*result.missing)));
    if (result.noValid)
        job.out.error(
            u"the phone gives no reference for the contact shown as %1; nothing was changed in it."_s.arg(
                printable(*result.noValid)));
    return result.isSound();
}

} // namespace

ExitStatus runPhonebookAdd(Job& job)
{
    const QString path = job.invocation.arguments.first();
    auto list = readContacts(job, path);
    if (!list)
        return ExitWrongUse;
    if (!confirmWarnings(job, warningLines(list->contacts) + droppedLines(path, *list)))
        return ExitRefused;
    const ContactPlan plan = operations::planAdd(std::move(list->contacts));
    const auto makePlan = [&](const ContactEdit& edit, ExitStatus& status) {
        status = ExitFailed;
        return requireRoom(job, edit, plan) ? std::optional(plan) : std::nullopt;
    };
    return changeContacts(job, {u"written"_s, operations::RecordCause::Add}, makePlan);
}

ExitStatus runPhonebookSet(Job& job)
{
    const QString path = job.invocation.arguments[1];
    auto list = readContacts(job, path);
    if (!list)
        return ExitWrongUse;
    if (list->contacts.size() != 1) {
        job.out.error(u"%1 holds %2, not one."_s.arg(path, entryCount(list->contacts.size())));
        return ExitWrongUse;
    }
    phonedata::tVcfEntry& contact = list->contacts.front();
    contact.luid = job.invocation.arguments[0];
    if (!requireAnswers(job, u"Change a contact in the phone?"_s) ||
        !confirmWarnings(job, warningLines(list->contacts) + droppedLines(path, *list)))
        return ExitRefused;
    const auto makePlan = [&](const ContactEdit& edit, ExitStatus& status) -> std::optional<ContactPlan> {
        const LuidPlan result = operations::planChange(edit.held(), contact);
        status = ExitWrongUse;
        if (!requireLuids(job, result))
            return std::nullopt;
        status = ExitRefused;
        const bool goesOn =
            confirmWarnings(job, heldLines(result.plan, edit.held())) &&
            job.questions.confirm(u"Replace %1 by %2 in the phone?"_s.arg(
                printable(contactName(result.plan.change.front().from)), printable(contactName(contact))));
        return goesOn ? std::optional(result.plan) : std::nullopt;
    };
    return changeContacts(job, {u"written"_s, operations::RecordCause::Change}, makePlan);
}

ExitStatus runPhonebookDelete(Job& job)
{
    QStringList luids = job.invocation.arguments;
    luids.removeDuplicates();
    if (!requireAnswers(job, u"Delete %1 in the phone?"_s.arg(entryCount(static_cast<size_t>(luids.size())))))
        return ExitRefused;
    const auto makePlan = [&](const ContactEdit& edit, ExitStatus& status) -> std::optional<ContactPlan> {
        const LuidPlan result = operations::planDelete(edit.held(), luids);
        status = ExitWrongUse;
        if (!requireLuids(job, result))
            return std::nullopt;
        QStringList names;
        for (const phonedata::tVcfEntry& contact : result.plan.remove)
            names.append(printable(contactName(contact)));
        status = ExitRefused;
        const bool goesOn = job.questions.confirm(
            u"Delete %1 in the phone: %2?"_s.arg(entryCount(result.plan.remove.size()), names.join(u", "_s)));
        return goesOn ? std::optional(result.plan) : std::nullopt;
    };
    return changeContacts(job, {u"deleted"_s, operations::RecordCause::Delete}, makePlan);
}

} // namespace kalmo::cli
