// Former states: the list of records, and putting one back.

#include "operations/Records.h"
#include "Shell.h"
#include "support/TestProgram.h"

using operations::RecordedList;
using operations::Records;
using operations::State;

namespace {

void makeFiles(const Handset& handset)
{
    handset.file(u"new.bmp"_s, QByteArray("BM\0\xFF", 4).repeated(300));
    handset.file(u"empty.txt"_s, "x");
    handset.file(u"states.json"_s, "mine");
    handset.file(u"one.json"_s, R"([{"lastName":"Łukasz; =41","home":"1","birthday":"1970-03-21T12:30"}])");
    handset.file(u"no.json"_s, "[]");
    handset.file(u"list.json"_s, R"([{"name":"A","number":"1"},{"name":"B","number":"2"}])");
    handset.file(u"turned.json"_s, R"([{"name":"B","number":"2"},{"name":"A","number":"1"}])");
    handset.file(u"list.prv"_s, "\"Ost\",\"01032\"\r\n");
}

/// The record of a command that has been carried out.
void checkRecord(const QJsonObject& record, const QString& command, Handset& handset)
{
    const QStringList words = command.split(u' ');
    QCOMPARE(record[u"list"_s].toString(), words[0]);
    QCOMPARE(record[u"cause"_s].toString(), words[0] == u"files"_s ? u"files "_s + words[1] : words[1]);
    QCOMPARE(record[u"state"_s].toString(), u"done"_s);
    QCOMPARE(record[u"serial"_s].toString(), handset.port.handset().phone().settings.serialNumber);
}

} // namespace

class tst_TakingBack : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void history();
    void everyChangeIsTakenBack();
};

void tst_TakingBack::history()
{
    Shell shell;
    QCOMPARE(shell.run(u"--json history"_s), ExitDone);
    QCOMPARE(shell.value() + shell.told, u"[]Kalmo has not changed any phone yet.\n"_s);

    Records one(shell.test.context, {u"SL450HX"_s, u"123"_s});
    Records two(shell.test.context, {u"C475\x1b"_s, u"unknown"_s});
    one.begin(RecordedList::Phonebook, operations::RecordCause::Write, 2, {});
    two.begin(RecordedList::Files, operations::RecordCause::PutFiles, 1, {});
    one.finish(u"1"_s, State::Done, {{u"sent"_s, 1}});
    shell.printed.clear();
    shell.told.clear();
    QCOMPARE(shell.run(u"history"_s), ExitDone);
    QCOMPARE(shell.printed + shell.told,
             u"Id  Time                  Phone    Serial number  List       Cause      Entries  State\n"
             "2   2026-11-21  12:00:00  C475?    unknown        files      files put  1        unknown\n"
             "1   2026-11-21  12:00:00  SL450HX  123            phonebook  write      2        done\n"_s);
}

/// Each change is undone, the undo too, and that once more.
void tst_TakingBack::everyChangeIsTakenBack()
{
    // The model, commands ahead of the change, and the change.
    Rows<QString, QStringList, QString> rows;
    rows.add("files deleted", u"SL450HX"_s, {u"files put new.bmp empty.txt"_s, u"files attr new.bmp ro"_s},
             u"files rm --force new.bmp empty.txt"_s);
    rows.add("a file called as a part of the record", u"SL450HX"_s, {u"files put states.json"_s},
             u"files rm states.json"_s);
    rows.add("a folder deleted", u"SL450HX"_s, {u"files mkdir Neu/darin"_s}, u"files rm Neu/darin"_s);
    rows.add("moved", u"SL450HX"_s, {u"files put new.bmp"_s, u"files mkdir Neu"_s},
             u"files mv new.bmp Neu/old.bmp"_s);
    rows.add("all contacts replaced, family 5", u"S68H"_s, {}, u"phonebook write one.json"_s);
    rows.add("all contacts replaced, family 13", u"CL660HX"_s, {}, u"phonebook write one.json"_s);
    rows.add("a classic phonebook replaced", u"GALICIA"_s, {}, u"phonebook write list.json"_s);
    rows.add("a classic phonebook erased", u"WOODY"_s, {}, u"phonebook write no.json"_s);
    rows.add("a classic phonebook in another order", u"PICASSO"_s, {u"phonebook write list.json"_s},
             u"phonebook write turned.json"_s);
    rows.add("providers replaced", u"WOODY"_s, {}, u"providers write list.prv"_s);
    rows.each([](const auto& model, const auto& ahead, const auto& command) {
        Handset handset({.model = model, .atOnce = true});
        makeFiles(handset);
        const auto run = [&](const QString& line) {
            const ExitStatus status = handset(u"--yes "_s + line);
            if (status != ExitDone)
                qWarning("%s: %s", qPrintable(line), qPrintable(handset.told));
            return status;
        };
        for (const QString& line : ahead)
            QCOMPARE(run(line), ExitDone);
        const QStringList before = handset.memory();
        QCOMPARE(run(command), ExitDone);
        const QStringList after = handset.memory();
        QVERIFY(after != before);

        QCOMPARE(run(u"--json history"_s), ExitDone);
        const QJsonObject record = QJsonDocument::fromJson(handset.printed.toUtf8())[0].toObject();
        checkRecord(record, command, handset);
        QCOMPARE(run(u"undo --dry-run"_s), ExitDone);
        QCOMPARE(handset.memory(), after);
        QCOMPARE(run(u"undo"_s), ExitDone);
        QCOMPARE(handset.memory(), before);
        QCOMPARE(run(u"undo"_s), ExitDone);
        QCOMPARE(handset.memory(), after);
        QCOMPARE(run(u"undo "_s + record[u"id"_s].toString()), ExitDone);
        QCOMPARE(handset.memory(), before);
        if (handset.port.handset().phone().family.number >= 5) // others answer before the line feed, at once
            QCOMPARE(handset.port.handset().violations(), QStringList());
    });
}

KALMO_TEST(tst_TakingBack)
#include "tst_TakingBack.moc"
