#pragma once

#include "cli/Job.h"

namespace kalmo::cli {

/// Before the search: takes a phone that the last run left in data mode back to AT commands. A port that does
/// not open is left to the search.
void recoverUnclosedSession(Job& job);

} // namespace kalmo::cli
