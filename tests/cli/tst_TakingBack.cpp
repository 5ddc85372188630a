// Former states: the list of records, and putting one back.

#include "operations/Records.h"
#include "Shell.h"
#include "support/Rows.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using operations::RecordedList;
using operations::Records;
using operations::State;

class tst_TakingBack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void history();
};

void tst_TakingBack::history()
{
    Shell shell;
    QCOMPARE(shell.run(u"--json history"_s), ExitDone);
    QCOMPARE(shell.value() + shell.told, u"[]Kalmo has not changed any phone yet.\n"_s);

    Records one(shell.test.context, {u"SL450HX"_s, u"123"_s});
    Records two(shell.test.context, {u"C475\x1b"_s, u"unknown"_s});
    one.begin(RecordedList::Phonebook, u"write"_s, 2, {});
    two.begin(RecordedList::Files, u"files put"_s, 1, {});
    one.finish(u"1"_s, State::Done, {{u"sent"_s, 1}});
    shell.printed.clear();
    shell.told.clear();
    QCOMPARE(shell.run(u"history"_s), ExitDone);
    QCOMPARE(shell.printed + shell.told,
             u"Id  Time                  Phone    Serial number  List       Cause      Entries  State\n"
             "2   2026-11-21  12:00:00  C475?    unknown        files      files put  1        unknown\n"
             "1   2026-11-21  12:00:00  SL450HX  123            phonebook  write      2        done\n"_s);
    shell.printed.clear();
    QCOMPARE(shell.run(u"--json history"_s), ExitDone);
    QCOMPARE(
        shell.value(),
        u"[{\"cause\":\"files put\",\"entries\":1,\"id\":\"2\",\"list\":\"files\",\"phone\":\"C475\\u001b\","
        "\"serial\":\"unknown\",\"state\":\"unknown\",\"time\":\"2026-11-21T12:00:00\"},"
        "{\"cause\":\"write\",\"entries\":2,\"id\":\"1\",\"list\":\"phonebook\",\"phone\":\"SL450HX\","
        "\"serial\":\"123\",\"state\":\"done\",\"time\":\"2026-11-21T12:00:00\"}]"_s);
}

QTEST_GUILESS_MAIN(tst_TakingBack)
#include "tst_TakingBack.moc"
