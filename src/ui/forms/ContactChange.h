#pragma once

#include "operations/ContactEdit.h"
#include "phonedata/CommandResult.h"

#include <functional>

namespace kalmo::ui {

/// A plan, and the reason for it that the record says.
struct PlannedContacts
{
    operations::ContactPlan plan;
    operations::RecordCause cause;
};

/// Makes the plan of a change once the phone's contacts are read. Nothing if the phone is to stay as it is;
/// the user knows why.
using PlanContacts = std::function<std::optional<PlannedContacts>(const operations::ContactEdit& edit)>;

/// Shows a change in the list before its session ends. Returns true if the phone took all of it.
using AcceptContacts =
    std::function<bool(const operations::ContactEdit& edit, const operations::ContactOutcome& outcome)>;

struct ContactChange
{
    /// Cancelled means that the user has ended it, and that the phone confirmed all that was sent.
    phonedata::CommandResult result = phonedata::CommandResult::Failed;
    operations::Outcome facts = {};
};

/// Changes the phone's contacts in a session of its own. Its failures have been shown, but not that the
/// command as a whole has failed.
ContactChange changeContacts(phonedata::VcardStore& store, const toolkit::Progress& progress,
                             const PlanContacts& plan, const AcceptContacts& accept);

/// Returns true if the phone took a change, also if its answer was lost and reading back found the change.
/// The list then shows the reading.
bool acceptChange(phonedata::VcardStore& store, const operations::ContactEdit& edit,
                  const operations::ContactOutcome& outcome);

/// Returns true if the list lacks contacts of the phone, as after a reading that was stopped or has failed.
/// It has to show them ahead of a change, so that the changed one never stands there as the only one.
bool lacksContacts(const phonedata::VcardStore& store, const operations::ContactEdit& edit);

} // namespace kalmo::ui
