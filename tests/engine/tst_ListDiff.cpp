// The changes that writing a list makes.

#include "phonedata/ListDiff.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

namespace {

using Entries = std::vector<ClassicEntry>;

/// "name number date", with what is not needed left out.
Entries entries(const QStringList& lines)
{
    Entries made;
    for (const QString& line : lines)
        made.push_back({.name = line.section(u' ', 0, 0),
                        .number = line.section(u' ', 1, 1),
                        .date = line.section(u' ', 2, 2)});
    return made;
}

QString inWords(const ListDiff& diff)
{
    QStringList lines;
    const auto text = [](const ClassicEntry& entry) { return entry.name + entry.number + entry.date; };
    for (const ClassicEntry& entry : diff.add)
        lines.append(u'+' + text(entry));
    for (const ListDiff::Change& change : diff.change)
        lines.append(text(change.from) + u'>' + text(change.to));
    for (const ClassicEntry& entry : diff.remove)
        lines.append(u'-' + text(entry));
    return lines.join(u' ');
}

} // namespace

class tst_ListDiff : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void diff()
    {
        Rows<QStringList, QStringList, QString> rows;
        rows.add("another order", {u"A 1"_s, u"B 2"_s}, {u"B 2"_s, u"A 1"_s}, {});
        rows.add("another date", {u"A 1 d"_s}, {u"A 1 e"_s}, u"A1d>A1e"_s);
        rows.add("another number is another entry", {u"A 1"_s}, {u"A 2"_s}, u"+A2 -A1"_s);
        rows.add("name and number don't run together", {u"A1 1"_s}, {u"A 11"_s}, u"+A11 -A11"_s);
        rows.add("one double less", {u"A 1"_s, u"A 1"_s}, {u"A 1"_s}, u"-A1"_s);
        rows.add("equal doubles find each other first", {u"A 1 d"_s, u"A 1 e"_s}, {u"A 1 e"_s, u"A 1 f"_s},
                 u"A1d>A1f"_s);

        rows.each([&](const auto& held, const auto& wanted, const auto& outcome) {
            const ListDiff diff = diffLists(entries(held), entries(wanted));
            QCOMPARE(inWords(diff), outcome);
            QCOMPARE(diff.isEmpty(), inWords(diff).isEmpty());
        });
    }
};

KALMO_TEST(tst_ListDiff)
#include "tst_ListDiff.moc"
