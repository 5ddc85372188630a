#pragma once

#include "cli/DiffWords.h"
#include "cli/Invocation.h"
#include "cli/StoreWords.h"
#include "operations/ClassicLists.h"

#include <QJsonValue>

namespace kalmo::cli {

/// The changes that a write would make to a list of so many entries: their numbers, and each of them as text.
DiffCounts countsOf(const phonedata::ListDiff& diff, size_t heldCount);
QString diffText(const phonedata::ListDiff& diff, size_t heldCount, phonedata::Store store);

/// The differences between what the phone holds and what was written.
QString mismatchText(const phonedata::ListDiff& diff, phonedata::Store store);

/// The result of a write: entries that the phone confirmed, those that read back as the file has them, the
/// backup, the state. What is not known is null, such as the number of entries in a store that may not have
/// been erased.
QJsonValue resultJson(const operations::Outcome& outcome, bool isErased, const QString& backup);

struct WriteFailure
{
    const Invocation& invocation;
    const StoreWords& words;
    const operations::ListOutcome& result;
    QString port;   ///< for the message that it is gone
    QString backup; ///< empty if the phone held nothing
};

/// The phone's content after a write that failed, and the way back.
QString failureText(const WriteFailure& failure);

/// Why a written list could not be read back, in whole lines.
QString notReadBackText(const WriteFailure& failure);

/// Path of the backup and the command that puts it back, in whole lines; empty without a backup.
QString backupHint(const Invocation& invocation, const StoreWords& words, const QString& backup);

} // namespace kalmo::cli
