#include "cli/WriteReport.h"

#include "cli/CauseWords.h"

#include <QJsonObject>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::Cause;
using phonedata::ClassicEntry;
using phonedata::ListDiff;
using phonedata::Store;

namespace {

QString diffTableOf(const DiffWords& words, const ListDiff& diff, Store store)
{
    std::vector<DiffRow> rows;
    for (const ClassicEntry& entry : diff.add)
        rows.push_back({&DiffWords::add, entryCells(entry, store)});
    for (const ListDiff::Change& change : diff.change) {
        rows.push_back({&DiffWords::change, entryCells(change.to, store)});
        rows.push_back({&DiffWords::from, entryCells(change.from, store)});
    }
    for (const ClassicEntry& entry : diff.remove)
        rows.push_back({&DiffWords::remove, entryCells(entry, store)});
    return diffTable(words, entryHeadings(store), rows);
}

QString reasonOf(const WriteFailure& failure)
{
    const operations::ListOutcome& result = failure.result;
    const QString refused = !result.isErased          ? u"the phone refused the erase"_s
                            : result.outcome.sent > 0 ? u"the phone refused an entry"_s
                                                      : u"the phone refused to go on after the erase"_s;
    const QString notRead = u"the phone did not give all entries when they were read again"_s;
    const Cause cause = result.outcome.cause;
    if (cause == Cause::Doubtful && result.hasChangedMeanwhile)
        return u"the list in the phone has changed since it was read"_s;
    return causeInWords(cause, failure.port, {{Cause::PhoneRefused, refused}, {Cause::NotRead, notRead}});
}

} // namespace

DiffCounts countsOf(const ListDiff& diff, size_t heldCount)
{
    return {.add = diff.add.size(),
            .change = diff.change.size(),
            .remove = diff.remove.size(),
            .same = heldCount - diff.change.size() - diff.remove.size()};
}

QString diffText(const ListDiff& diff, size_t heldCount, Store store)
{
    return diffTableOf(plannedWords(), diff, store) + diffLine(countsOf(diff, heldCount));
}

QString mismatchText(const ListDiff& diff, Store store)
{
    return diffTableOf(
        {.add = u"missing"_s, .change = u"written"_s, .from = u"  holds"_s, .remove = u"not written"_s}, diff,
        store);
}

QJsonValue resultJson(const operations::Outcome& outcome, bool isErased, const QString& backup)
{
    return QJsonObject{{u"written"_s, isErased ? QJsonValue(outcome.confirmed) : QJsonValue()},
                       {u"verified"_s, outcome.verified ? QJsonValue(*outcome.verified) : QJsonValue()},
                       {u"backup"_s, backup.isEmpty() ? QJsonValue() : QJsonValue(backup)},
                       {u"state"_s, operations::wordOf(outcome.state)}};
}

QString failureText(const WriteFailure& failure)
{
    const operations::Outcome& outcome = failure.result.outcome;
    QString text = u"could not write the %1: %2.\n"_s.arg(failure.words.name, reasonOf(failure));
    if (failure.result.sentNothing())
        return text + u"Nothing was changed in the phone.\n"_s;
    if (outcome.state == operations::State::Unchanged)
        return text + u"The phone holds what it held before.\n"_s;
    if (!failure.result.isErased)
        text += u"What the phone holds now is not known.\n"_s;
    else
        text += u"The phone confirmed %1%2 of %3.%4%5\n"_s.arg(
            outcome.sent > 0 ? QString() : u"the erase, and "_s, QString::number(outcome.confirmed),
            entryCount(static_cast<size_t>(outcome.planned)),
            outcome.unknown > 0 ? u" It may hold one more, which it did not confirm."_s : QString(),
            failure.result.mayHoldDoubles ? u" It may hold an entry twice: the line was disturbed."_s
                                          : QString());
    return text + backupHint(failure.invocation, failure.words, failure.backup);
}

QString notReadBackText(const WriteFailure& failure)
{
    return u"could not read back the %1: %2.\nThe phone confirmed all %3.\n"_s.arg(
        failure.words.name, reasonOf(failure),
        entryCount(static_cast<size_t>(failure.result.outcome.planned)));
}

QString backupHint(const Invocation& invocation, const StoreWords& words, const QString& backup)
{
    if (backup.isEmpty())
        return {};
    return u"What it held before is in %1.\n"
           u"To put it back: %2\n"_s.arg(
               backup, invocation.again(u"%1 write %2"_s.arg(words.commands, inShellQuotes(backup))));
}

} // namespace kalmo::cli
