#pragma once

#include "cli/Invocation.h"
#include "cli/StoreWords.h"
#include "phonedata/ListDiff.h"

#include <QJsonValue>

#include <optional>

namespace kalmo::cli {

/// What a write would change: how many entries, as JSON, and each of them, as text.
QJsonValue diffJson(const phonedata::ListDiff& diff);
QString diffText(const phonedata::ListDiff& diff, size_t heldCount, phonedata::Store store);

/// How what the phone holds differs from what was written.
QString mismatchText(const phonedata::ListDiff& diff, phonedata::Store store);

/// The result of a write: entries that the phone took, those found as the file has them when it was read, the
/// backup. What is not known is null.
QJsonValue resultJson(std::optional<int> written, std::optional<int> verified, const QString& backup);

struct WriteFailure
{
    const Invocation& invocation;
    const StoreWords& words;
    QString cause;
    std::optional<int> held; ///< entries that the phone holds now, if that is known
    int wanted = 0;
    QString backup; ///< empty if the phone held nothing
};

/// What a write that failed leaves behind, and how to go back.
QString failureText(const WriteFailure& failure);

/// Names the backup and the command that puts it back, in whole lines; empty if there is none.
QString backupHint(const Invocation& invocation, const StoreWords& words, const QString& backup);

} // namespace kalmo::cli
