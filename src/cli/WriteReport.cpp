#include "cli/WriteReport.h"

#include "cli/CauseWords.h"
#include "cli/Tables.h"

#include <QJsonObject>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
using operations::Cause;
using phonedata::ClassicEntry;
using phonedata::ListDiff;
using phonedata::Store;

namespace {

class Differences
{
public:
    explicit Differences(Store store) : m_store(store) {}

    void add(const QString& what, const ClassicEntry& entry)
    {
        m_rows.push_back(QStringList{what} + entryCells(entry, m_store));
    }
    QString text() const
    {
        return m_rows.empty() ? QString()
                              : alignedTable(QStringList{QString()} + entryHeadings(m_store), m_rows);
    }

private:
    Store m_store;
    std::vector<QStringList> m_rows;
};

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

QJsonValue diffJson(const ListDiff& diff)
{
    return QJsonObject{{u"add"_s, static_cast<qint64>(diff.add.size())},
                       {u"change"_s, static_cast<qint64>(diff.change.size())},
                       {u"remove"_s, static_cast<qint64>(diff.remove.size())}};
}

QString diffText(const ListDiff& diff, size_t heldCount, Store store)
{
    Differences rows(store);
    for (const ClassicEntry& entry : diff.add)
        rows.add(u"add"_s, entry);
    for (const ListDiff::Change& change : diff.change) {
        rows.add(u"change"_s, change.to);
        rows.add(u"  from"_s, change.from);
    }
    for (const ClassicEntry& entry : diff.remove)
        rows.add(u"remove"_s, entry);
    const size_t same = heldCount - diff.change.size() - diff.remove.size();
    return rows.text() +
           u"%1 to add, %2 to change, %3 to remove; %4 stay as they are.\n"_s.arg(diff.add.size())
               .arg(diff.change.size())
               .arg(diff.remove.size())
               .arg(same);
}

QString mismatchText(const ListDiff& diff, Store store)
{
    Differences rows(store);
    for (const ClassicEntry& entry : diff.add)
        rows.add(u"missing"_s, entry);
    for (const ListDiff::Change& change : diff.change) {
        rows.add(u"written"_s, change.to);
        rows.add(u"  holds"_s, change.from);
    }
    for (const ClassicEntry& entry : diff.remove)
        rows.add(u"not written"_s, entry);
    return rows.text();
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
