#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <vector>

namespace kalmo::cli {

/// The words about a list that is to be written, for entries and contacts alike.

/// Numbers of entries that a write adds, changes and removes, and that stay as they are.
struct DiffCounts
{
    size_t add = 0;
    size_t change = 0;
    size_t remove = 0;
    size_t same = 0;
};

/// First words of the rows of a table of differences.
struct DiffWords
{
    QString add;    ///< an entry that the phone lacks
    QString change; ///< one that it holds otherwise
    QString from;   ///< below that, the entry that it holds
    QString remove; ///< one that only the phone holds
};
/// Words for a change to come: "add", "change", "  from", "remove".
const DiffWords& plannedWords();

/// A row of that table: one of the words, and the cells of the entry.
struct DiffRow
{
    QString DiffWords::*word;
    QStringList cells;
};
/// The table under the headings of the cells; empty without rows.
QString diffTable(const DiffWords& words, const QStringList& headings, const std::vector<DiffRow>& rows);

QJsonObject diffJson(const DiffCounts& counts);
/// "1 to add, 2 to change, ...", a whole line.
QString diffLine(const DiffCounts& counts);
/// The question before a write. `count` is that of entryCount().
QString writeQuestion(const QString& count, const DiffCounts& counts);
/// The result of a write that was not needed, and of one that was read back, each a whole line.
QString nothingToWrite();
QString foundRight(const QString& count);

} // namespace kalmo::cli
