#pragma once

#include "cli/Job.h"
#include "operations/ContactEdit.h"
#include "operations/SavedLists.h"

#include <QJsonObject>

namespace kalmo::cli {

/// A command that changes contacts.
struct ContactCommand
{
    QString verb; ///< "written" or "deleted"; the key of their number in JSON too
    operations::RecordCause cause;
};

/// Makes the plan once the phone has been read. Nothing to end the command with `status`, which has been
/// reported.
using MakePlan = std::function<std::optional<operations::ContactPlan>(const operations::ContactEdit& edit,
                                                                      ExitStatus& status)>;

/// Reports the result of a change: JSON and text, and what went wrong.
using Report =
    std::function<ExitStatus(const operations::ContactEdit& edit, const operations::ContactOutcome& outcome)>;

/// Finds the phone, reads its contacts, carries out the plan and reports.
ExitStatus changeContacts(Job& job, const ContactCommand& command, const MakePlan& makePlan,
                          const Report& report);
/// The same with the usual report: the LUIDs of the contacts, and those that were not changed.
ExitStatus changeContacts(Job& job, const ContactCommand& command, const MakePlan& makePlan);
/// The same with a phone that has been found.
ExitStatus changeContactsOfFound(Job& job, const ContactCommand& command, const MakePlan& makePlan,
                                 const Report& report);

/// The usual report. `json` holds further facts for the result in JSON.
ExitStatus reportContacts(Job& job, const ContactCommand& command, const operations::ContactOutcome& outcome,
                          QJsonObject json = {});

/// Reports that new contacts do not fit. Returns true if they do.
bool requireRoom(Job& job, const operations::ContactEdit& edit, const operations::ContactPlan& plan);

/// Reads the file that a command names, without contacts that hold nothing. Nothing after a fault, which has
/// been reported.
std::optional<operations::SavedList> readContacts(Job& job, const QString& path);
/// The same for a file that has been read, or not, for the reason in `fault`.
std::optional<operations::SavedList> acceptContacts(Job& job, const QString& path,
                                                    std::optional<operations::SavedList> list,
                                                    operations::SavedListFault fault);

/// Lines of warnings about contacts that a phone may cut or refuse; empty if there are none.
QString warningLines(const operations::Contacts& contacts);

/// The same about what the changes of a plan lose of the cards that the phone holds.
QString heldLines(const operations::ContactPlan& plan, const phonedata::ContactReading& held);

/// The same about lines of the file that contacts have no field for.
QString droppedLines(const QString& path, const operations::SavedList& list);

/// Asks about warnings. Where nobody is there to see the question they are noted. Returns true if the change
/// may go on.
bool confirmWarnings(Job& job, const QString& warnings);

/// "kalmoctl: could not change all contacts: ..." with the place of the backup, for a change that is not
/// Done.
QString failureText(Job& job, const ContactCommand& command, const operations::ContactOutcome& outcome);

/// The facts that each report in JSON has: `backup`, `state`, and `verified`, the number of contacts that
/// reading back found as wanted, or null.
QJsonObject commonJson(const operations::Outcome& facts, std::optional<int> verified);

/// Exit status of a change.
ExitStatus statusOf(const operations::Outcome& facts);

} // namespace kalmo::cli
