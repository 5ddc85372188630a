#include "cli/DiffWords.h"

#include "cli/Tables.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;

const DiffWords& plannedWords()
{
    static const DiffWords words{
        .add = u"add"_s, .change = u"change"_s, .from = u"  from"_s, .remove = u"remove"_s};
    return words;
}

QString diffTable(const DiffWords& words, const QStringList& headings, const std::vector<DiffRow>& rows)
{
    std::vector<QStringList> lines;
    for (const DiffRow& row : rows)
        lines.push_back(QStringList{words.*row.word} + row.cells);
    return lines.empty() ? QString() : alignedTable(QStringList{QString()} + headings, lines);
}

QJsonObject diffJson(const DiffCounts& counts)
{
    return {{u"add"_s, static_cast<qint64>(counts.add)},
            {u"change"_s, static_cast<qint64>(counts.change)},
            {u"remove"_s, static_cast<qint64>(counts.remove)}};
}

QString diffLine(const DiffCounts& counts)
{
    return u"%1 to add, %2 to change, %3 to remove; %4 stay as they are.\n"_s.arg(counts.add)
        .arg(counts.change)
        .arg(counts.remove)
        .arg(counts.same);
}

QString writeQuestion(const QString& count, const DiffCounts& counts)
{
    return u"Write %1 to the phone (%2 new, %3 changed, %4 removed)?"_s.arg(
        count, QString::number(counts.add), QString::number(counts.change), QString::number(counts.remove));
}

QString nothingToWrite()
{
    return u"The phone already holds exactly these entries; nothing was written.\n"_s;
}

QString foundRight(const QString& count)
{
    return u"%1 written, read back and found right.\n"_s.arg(count);
}

} // namespace kalmo::cli
