#include "cli/WriteReport.h"

#include "cli/Tables.h"

#include <QJsonObject>

namespace kalmo::cli {

using namespace Qt::StringLiterals;
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

QJsonValue resultJson(std::optional<int> written, std::optional<int> verified, const QString& backup)
{
    const auto number = [](std::optional<int> count) { return count ? QJsonValue(*count) : QJsonValue(); };
    return QJsonObject{{u"written"_s, number(written)},
                       {u"verified"_s, number(verified)},
                       {u"backup"_s, backup.isEmpty() ? QJsonValue() : QJsonValue(backup)}};
}

QString failureText(const WriteFailure& failure)
{
    QString text = u"the %1 could not be written: %2.\n"_s.arg(failure.words.name, failure.cause);
    if (failure.held)
        text += u"The phone now holds %1 of %2, as far as it confirmed them.\n"_s.arg(
            QString::number(*failure.held), entryCount(static_cast<size_t>(failure.wanted)));
    else
        text += u"What the phone holds now is not known.\n"_s;
    return text + backupHint(failure.invocation, failure.words, failure.backup);
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
