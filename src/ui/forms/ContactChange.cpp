#include "ui/forms/ContactChange.h"

#include "ui/forms/ContactMessages.h"

namespace kalmo::ui {

using phonedata::CommandResult;
using phonedata::VcardStore;

namespace {

/// The window changes single contacts that the phone holds, so a contact that a reading lacks is not touched.
operations::ContactPolicy windowPolicy()
{
    return {.mayUseDoubtfulReading = true, .readsAgain = true};
}

/// Returns true if the user ended it, and nothing is open: the phone confirmed all that was sent.
bool isStopped(const operations::Outcome& facts)
{
    return facts.cause == operations::Cause::Interrupted && facts.sent == facts.confirmed &&
           facts.unknown == 0;
}

/// Opens the session. A list with a change that could not be compared shows this reading.
operations::Outcome begin(VcardStore& store, operations::ContactEdit& edit)
{
    const bool isCompared = store.lastReading() && store.lastReading()->isConfirmed();
    const operations::Outcome ready = edit.begin();
    if (ready.isDone() && !isCompared && edit.held().isConfirmed())
        store.showReading(edit.held());
    return ready;
}

} // namespace

ContactChange changeContacts(VcardStore& store, const toolkit::Progress& progress, const PlanContacts& plan,
                             const AcceptContacts& accept)
{
    operations::ContactOutcome outcome;
    bool isDone = false;
    {
        operations::ContactEdit edit(store.shared_from_this(), windowPolicy(), progress);
        const operations::Outcome ready = begin(store, edit);
        if (!ready.isDone()) {
            edit.end();
            if (isStopped(ready))
                return {CommandResult::Cancelled};
            showOwnFailure(store, ready);
            return {};
        }
        const auto planned = plan(edit);
        if (!planned)
            return {CommandResult::Refused};
        outcome = edit.apply(planned->plan, planned->cause);
        isDone = accept(edit, outcome);
    }
    if (!isDone && isStopped(outcome.facts))
        return {CommandResult::Cancelled, outcome.facts};
    showOwnFailure(store, outcome);
    // Without a copy of the earlier state nothing is sent.
    if (outcome.hasChangedMeanwhile || outcome.facts.cause == operations::Cause::NotSaved)
        return {CommandResult::Refused, outcome.facts};
    return {isDone ? CommandResult::Done : CommandResult::Failed, outcome.facts};
}

bool acceptChange(VcardStore& store, const operations::ContactEdit& edit,
                  const operations::ContactOutcome& outcome)
{
    if (outcome.isAnswered)
        return true;
    if (!outcome.facts.isDone() || !edit.heldAfter())
        return false;
    store.showReading(*edit.heldAfter());
    return true;
}

bool lacksContacts(const VcardStore& store, const operations::ContactEdit& edit)
{
    return !store.isListKnown() || store.list()->count() < std::ssize(edit.held().cards.cards);
}

} // namespace kalmo::ui
