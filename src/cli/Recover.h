#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// Returns true if the settings say that the last run left the phone at the port in use in its data mode.
bool isSessionUnclosed(const Job& job);

/// Opens the port and takes a phone that was left in data mode back to AT commands, at each of `rates` until
/// one helps. The port stays open. Reports a failure only if the port does not open.
bool recoverAtPort(Job& job, const QList<int>& rates);

/// Before the search: does so at the last rate if isSessionUnclosed().
void recoverUnclosedSession(Job& job);

/// The phone was found, so nothing of an earlier session is left.
void forgetUnclosedSession(Job& job);

} // namespace kalmo::cli
