#pragma once

#include "cli/Job.h"
#include "operations/Outcome.h"

namespace kalmo::cli {

/// Texts about one setting, for its messages.
struct SettingWords
{
    QString name; ///< "the area codes"
    bool isPlural = false;
};

/// Prints why a setting is not as wanted, in terms of what was sent and what the phone confirmed. Returns the
/// exit status; ExitDone, without a message, for a setting that was read back as wanted.
ExitStatus reportSetting(Job& job, const SettingWords& words, const operations::Outcome& outcome);

/// A reason in a few words, "the phone did not answer" for example.
QString reasonText(const Job& job, operations::Cause cause);

} // namespace kalmo::cli
