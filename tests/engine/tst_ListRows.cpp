// The rows of a list: keys, order, selection.

#include "support/ListLines.h"
#include "support/TestProgram.h"
#include "toolkit/ListRows.h"
#include "toolkit/RowFilter.h"

using namespace kalmo::toolkit;

namespace {

ListRow named(const QString& name, const QString& key = {}, const QString& tag = {})
{
    return {.key = key, .cells = {{name, tag}}};
}

} // namespace

class tst_ListRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysFollowTheirRows()
    {
        ListRows rows(u"lvw"_s, {{u"Name"_s}});
        rows.addAll({named(u"c"_s, u"3"_s), named(u"a"_s, u"1"_s), named(u"b"_s, u"2"_s)});
        QCOMPARE(rows.indexOfKey(u"2"_s), 2);
        rows.sortBy(0, Qt::AscendingOrder);
        QCOMPARE(rows.indexOfKey(u"3"_s), 2);
        rows.removeAt(0);
        QCOMPARE(rows.indexOfKey(u"1"_s), -1);
        QCOMPARE(rows.indexOfKey(u"3"_s), 1);
        rows.setKey(1, u"temp_3"_s);
        QCOMPARE(rows.indexOfKey(u"3"_s), -1);
        QCOMPARE(rows.add(named(u"d"_s, u"3"_s)), 2);
        QCOMPARE(rows.indexOfKey(u"3"_s), 2);
        QCOMPARE(rows.indexOfKey(u"temp_3"_s), 1);
        rows.clear();
        QCOMPARE(rows.indexOfKey(u"3"_s), -1);
    }

    void sorting()
    {
        Rows<QStringList, SortBy, Qt::SortOrder, QStringList> rows;
        rows.add("German, without case", {u"Zorn"_s, u"öde"_s, u"Otto"_s, u"ab"_s, u"Äb"_s}, SortBy::Text,
                 Qt::AscendingOrder, {u"ab"_s, u"Äb"_s, u"öde"_s, u"Otto"_s, u"Zorn"_s});
        rows.add("by tag, that is by length here", {u"ccc"_s, u"bb"_s, u"aaaa"_s, u"z"_s}, SortBy::Tag,
                 Qt::DescendingOrder, {u"aaaa"_s, u"ccc"_s, u"bb"_s, u"z"_s});

        rows.add("phone numbers as texts", {u"9"_s, u"0521"_s, u"110"_s}, SortBy::Text, Qt::AscendingOrder,
                 {u"0521"_s, u"110"_s, u"9"_s});
        rows.add("dates with a year",
                 {u"01.02.2001  08:00"_s, u"31.01.2001  08:00"_s, u"05.05.1970  09:00"_s, u""_s},
                 SortBy::Date, Qt::AscendingOrder,
                 {u""_s, u"05.05.1970  09:00"_s, u"31.01.2001  08:00"_s, u"01.02.2001  08:00"_s});
        rows.add("dates without one", {u"24.12  08:30"_s, u"03.05  09:00"_s, u"24.12  07:00"_s}, SortBy::Date,
                 Qt::AscendingOrder, {u"03.05  09:00"_s, u"24.12  07:00"_s, u"24.12  08:30"_s});

        rows.each([&](const auto& added, const auto& sortsBy, const auto& order, const auto& sorted) {
            ListRows atOnce(u"lvw"_s, {{u"Name"_s, sortsBy}});
            ListRows oneByOne(u"lvw"_s, {{u"Name"_s, sortsBy}});
            oneByOne.sortBy(0, order);
            for (const QString& name : added) {
                for (ListRows* list : {&atOnce, &oneByOne})
                    list->add(named(name, {}, QString::number(name.size()).rightJustified(16, u'0')));
            }
            QCOMPARE(linesOf(atOnce), added);
            atOnce.sortBy(0, order);
            QCOMPARE(linesOf(atOnce), sorted);
            QCOMPARE(linesOf(oneByOne), sorted);
        });
    }

    void searching()
    {
        const QStringList row{u"Müller"_s, u"Zoë"_s, u"+49 521 / 8899"_s, u"Große Straße"_s};
        Rows<QString, bool> rows;
        rows.add("nothing", u" "_s, true);
        rows.add("without accents", u"muller zoe"_s, true);
        rows.add("as typed without umlauts", u"mueller"_s, true);
        rows.add("sharp s", u"STRASSE"_s, true);
        rows.add("words in several columns", u"8899 zoë"_s, true);
        rows.add("no word reaches over two cells", u"müllerzoë"_s, false);
        rows.each([&](const auto& typed, const auto& matches) {
            QCOMPARE(RowFilter(typed).matches(row), matches);
        });
    }

    void selection()
    {
        ListRows rows(u"lvw"_s, {{u"Name"_s}});
        rows.addAll({named(u"b"_s), named(u"c"_s), named(u"a"_s)});
        rows.setCurrent(1);
        rows.setSelected(2, true);
        QCOMPARE(rows.selectedRows(), (QList<int>{1, 2}));
        rows.sortBy(0, Qt::AscendingOrder);
        QCOMPARE(rows.selectedRows(), (QList<int>{0, 2})); // a and c wherever they went
        QCOMPARE(rows.current(), 2);
        rows.setCurrent(1);
        QCOMPARE(rows.selectedRows(), QList<int>{1});
        rows.selectAll();
        QCOMPARE(rows.selectedRows().size(), 3);
        rows.removeAt(1);
        QCOMPARE(rows.current(), -1);
    }
};

KALMO_TEST(tst_ListRows)
#include "tst_ListRows.moc"
