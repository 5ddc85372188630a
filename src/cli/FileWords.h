#pragma once

#include "cli/Command.h"
#include "operations/FileAccess.h"

#include <QJsonObject>

namespace kalmo::cli {

/// Words about files of the phone after an operation.

/// Sentence, without its full stop, for a file that can't be dealt with as wanted. `shown` is its path in the
/// phone, `local` its path here.
QString obstacleText(operations::FileObstacle obstacle, const QString& shown, const QString& local = {});
ExitStatus statusOf(operations::FileObstacle obstacle);

/// Words after "could not VERB OBJECT: ".
QString reasonText(operations::Cause cause);
/// Does the same with the system's own words, where there are any.
QString reasonText(const operations::FileOutcome& outcome);

/// The same with what is known of the phone: `unknown` is the sentence for a change that may have happened,
/// "it is not known whether /a is deleted" for example.
QString failureText(const QString& couldNot, const operations::FileOutcome& outcome, const QString& unknown);

/// Note about a change whose record could not be completed.
QString openRecordText();

/// Failed, or refused where the user ended it.
ExitStatus statusOf(const operations::FileOutcome& outcome);

} // namespace kalmo::cli
