// Writing a list from the command line: nothing is erased that is not saved, and what the phone holds
// afterwards is known.

#include "operations/Records.h"
#include "phonedata/RawReplies.h"
#include "Shell.h"
#include "support/TestProgram.h"

namespace {

const QByteArray listToWrite = "\"A\",\"1\",\"01.02  03:04\",\"Optisch\"\r\n\"C\",\"3\"\r\n";
const QByteArray changesA = "AT^WSWE=1,A,1,1,9,02010304S\r\n";
const QByteArray addsC = "AT^WSWE=1,C,1,3,0,\r\n";
const QByteArrayList repliesAfterwards{"1,A,1,1,9,02010304S", "1,C,1,3,0,"};

/// A handset that is found, and gives these entries.
void holding(Shell& shell, const QByteArrayList& entries)
{
    shell.found("WOODSTOCK");
    shell.identified();
    shell.read(entries);
}

void holdingAAndB(Shell& shell)
{
    holding(shell, {"1,A,1,1,0,", "1,B,1,2,0,"});
}

/// The same, and the first of the two entries is written.
ClassicScript& writingTheFirst(Shell& shell)
{
    holdingAAndB(shell);
    return shell.erase().expect(changesA);
}

QString resultOf(const QString& state, std::optional<int> verified, std::optional<int> written)
{
    const auto number = [](auto value) { return value ? QString::number(*value) : u"null"_s; };
    return uR"({"backup":"B","state":"%1","verified":%2,"written":%3})"_s.arg(state, number(verified),
                                                                              number(written));
}

/// Options, the file, the status, the value, a part of the messages, and the phone. A user who is asked says
/// no.
using WriteRuns = Rows<QString, QByteArray, ExitStatus, QString, QString, Shell::Prepare>;

void eachWrite(const WriteRuns& rows)
{
    rows.each([](const auto& options, const auto& bytes, const auto& status, const auto& value,
                 const auto& told, const auto& prepare) {
        Shell shell;
        shell.answers = QStringList{u"n"_s};
        prepare(shell);
        const QString path = shell.file(u"book.tel"_s, bytes);
        QCOMPARE(shell.run((u"--json phonebook write "_s + path + u' ' + options).trimmed()), status);
        const QString backup = shell.test.storage + u"/Backup/"_s + shell.backups().value(0);
        QCOMPARE(shell.value().replace(backup, u"B"_s), value);
        QVERIFY2(shell.told.contains(told), qPrintable(shell.told));
        if (backup.endsWith(u".tel"_s) && value.contains(u"\"B\""_s))
            QCOMPARE(TestContext::contentOf(backup),
                     QByteArray("\"A\",\"1\",\"\",\"\",\"\",\"\"\r\n\"B\",\"2\",\"\",\"\",\"\",\"\"\r\n"));
    });
}

} // namespace

class tst_WriteCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void asksAndSavesFirst();
    void writes();
    void disturbedWrites();
    void storeLeftOpen();
    void undo();
    void emptyFile();
    void undoOnADoubtfulReading();
};

void tst_WriteCommands::asksAndSavesFirst()
{
    const QString refused = resultOf(u"unchanged"_s, {}, 0);
    const auto readTwiceInDoubt = [](Shell& shell) {
        shell.found("WOODSTOCK");
        shell.identified();
        for (int time = 0; time < 2; ++time)
            shell.script.expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r").expect("AT\r");
    };
    WriteRuns rows;
    rows.add("what would be done", u"--dry-run"_s, listToWrite, ExitDone,
             uR"({"add":1,"change":1,"remove":1})"_s, {}, holdingAAndB);
    rows.add("the user does not", {}, listToWrite, ExitRefused, refused,
             u"kalmoctl: nothing was changed in the phone.\nWhat it holds is saved in /"_s, holdingAAndB);
    rows.add("the user does not want to write what the phone can't hold", u"--quiet"_s,
             "\"A\",\"1\"\r\n\"B[\",\"2\"\r\n", ExitRefused, refused,
             u"Warning: entry 2 (B[): the phone can't hold \"[\" in a name.\nThe phone may change an entry "
             "that it can't hold, or refuse it, and then lacks those after it too. Write all the same?"_s,
             holdingAAndB);
    rows.add("no backup, no write", u"--yes"_s, listToWrite, ExitFailed, {},
             u"No such file or directory.\nNothing was changed in the phone.\n"_s, [](Shell& shell) {
                 QDir(shell.test.storage).rmdir(u"Backup"_s);
                 holdingAAndB(shell);
             });
    rows.add("backup of what lines can't hold", {}, listToWrite, ExitRefused, refused, u"05.json.\n"_s,
             [](Shell& shell) { holding(shell, {"2,A\x95,1,1,0,"}); });
    rows.add("doubtful twice, and the user does not want it", {}, listToWrite, ExitFailed, {},
             u"so the backup may lack an entry. Write all the same? [y/N] kalmoctl: could not read the "
             u"phonebook for sure: the line"_s,
             readTwiceInDoubt);
    rows.add("doubtful twice is nothing that --yes could answer", u"--yes"_s, listToWrite, ExitFailed, {},
             u"so an entry may be missing or garbled.\nNothing was changed in the phone.\n"_s,
             readTwiceInDoubt);
    eachWrite(rows);
}

void tst_WriteCommands::writes()
{
    WriteRuns rows;
    rows.add("all well", u"--yes"_s, listToWrite, ExitDone, resultOf(u"done"_s, 2, 2),
             u"        Name  Number  Date          Reminder  VIP  Sound\n"
             "add     C     3\n"
             "change  A     1       01.02  03:04  Optisch\n"
             "  from  A     1\n"
             "remove  B     2\n"
             "1 to add, 1 to change, 1 to remove; 0 stay as they are.\n"_s,
             [](Shell& shell) {
                 writingTheFirst(shell).expect(addsC).expect("AT\r");
                 shell.read(repliesAfterwards);
             });
    rows.add("what this family takes otherwise, and what can't be sent", u"--yes"_s,
             "\"A\",\"1\",\"01.02  03:04\",\"Melodie 3\"\r\n\"B\x1b\",\"2\",\"xx.02  03:04\"\r\n", ExitDone,
             resultOf(u"done"_s, 0, 2),
             u"Warning: this handset counts melodies from 0 when they are written and from 1 when they are "
             "read: after the write 1 melody will come back as the melody before.\nWarning: entry 2 (B?): "
             "the name has a control character that can't be sent; it is left out.\n"_s,
             [](Shell& shell) {
                 holdingAAndB(shell);
                 shell.erase().expect("AT^WSWE=1,A,1,1,9,020103042\r\n").expect("AT^WSWE=1,B,1,2,0,\r\n");
                 shell.script.expect("AT\r");
                 shell.read({"1,A,1,1,9,020103042", "1,B,1,2,0,"});
             });
    rows.add("what the phone holds is not written again, whatever it would become", u"--yes"_s,
             "\"A\",\"1\",\"01.02  03:04\",\"Melodie 3\"\r\n", ExitDone,
             resultOf(u"unchanged"_s, 1, 0).replace(u"\"B\""_s, u"null"_s), {},
             [](Shell& shell) { holding(shell, {"1,A,1,1,9,020103043"}); });
    eachWrite(rows);
}

void tst_WriteCommands::disturbedWrites()
{
    WriteRuns rows;
    rows.add("an entry that was sent again may be there twice", u"--yes"_s, listToWrite, ExitFailed,
             resultOf(u"unknown"_s, {}, 1),
             u"The phone confirmed 1 of 2 entries. It may hold an entry twice: the line was disturbed.\n"_s,
             [](Shell& shell) {
                 holdingAAndB(shell);
                 shell.erase().loseAnswer(changesA).refuse(addsC).expect("AT\r");
             });
    rows.add("an erase without an answer is not sent again after Ctrl-C", u"--yes"_s, listToWrite,
             ExitRefused, resultOf(u"unknown"_s, {}, {}),
             u"could not write the phonebook: interrupted.\nWhat the phone holds now is not known.\n"_s,
             [](Shell& shell) {
                 holdingAAndB(shell);
                 shell.port.expect("AT^WSEL=\"TB\"\r").then([&shell] { shell.stop.checked = true; });
                 shell.script.expect("AT\r");
             });
    rows.add("end that is not confirmed, found right all the same", u"--yes"_s, listToWrite, ExitDone,
             resultOf(u"done"_s, 2, 2), {}, [](Shell& shell) {
                 writingTheFirst(shell).expect(addsC).refuse("AT\r");
                 shell.script.expect("AT\r"); // once more ahead of the next command
                 shell.read(repliesAfterwards);
             });
    rows.add("the phone holds something else", u"--yes"_s, listToWrite, ExitFailed,
             resultOf(u"unknown"_s, 0, 2),
             u"kalmoctl: the phone does not hold what was written. This differs:\n"
             "             Name  Number  Date          Reminder  VIP  Sound\n"
             "missing      C     3\n"
             "written      A     1       01.02  03:04  Optisch\n"
             "  holds      A     1\n"
             "not written  D     3\n"
             "What it held before is in "_s,
             [](Shell& shell) {
                 writingTheFirst(shell).expect(addsC).expect("AT\r");
                 shell.read({"1,A,1,1,0,", "1,D,1,3,0,"});
             });
    eachWrite(rows);
}

/// A kill in the middle leaves a store open, and a handset of family 3 or 4 takes no other command then.
void tst_WriteCommands::storeLeftOpen()
{
    Handset handset({.model = u"GALICIA"_s});
    handset.port.hideClosing();
    handset.port.Open({});
    handset.port.WriteText("AT^WSSL=\"TB\"\r");
    handset.test.clock.WaitSeconds(1);
    QCOMPARE(handset(u"find"_s), ExitNoPhone);
    QCOMPARE(handset(u"recover"_s), ExitDone);
    QCOMPARE(handset(u"--json phonebook read"_s), ExitDone);
}

/// The oldest family shifts the melodies of reminders with each write; taking it back brings the old codes.
void tst_WriteCommands::undo()
{
    Handset handset({.model = u"WOODSTOCK"_s});
    // A list that is read names each code of this family by its own name.
    const auto content = [&handset] {
        return handset(u"--json phonebook read"_s) == ExitDone ? handset.printed : QString();
    };
    const QString before = content();
    QCOMPARE(handset(u"phonebook read -o old.json"_s), ExitDone);
    QByteArray list = TestContext::contentOf(handset.test.path(u"old.json"_s));
    list.replace("]", ", {\"name\": \"Neu\", \"number\": \"1\"}]");
    handset.file(u"new.json"_s, list);
    QCOMPARE(handset(u"--yes phonebook write new.json"_s), ExitDone);
    const QString written = content();
    QVERIFY(before.contains(u"\"Melodie 3\""_s) && !written.contains(u"\"Melodie 3\""_s));
    QVERIFY2(handset(u"--yes undo"_s) == ExitDone, qPrintable(handset.told));
    QCOMPARE(content(), before);
    QVERIFY2(handset(u"--yes undo"_s) == ExitDone, qPrintable(handset.told)); // an undo can be undone too
    QCOMPARE(content(), written);
    QCOMPARE(handset.port.handset().violations(), QStringList());
}

/// A file without entries is for any phone, and erases no contacts.
void tst_WriteCommands::emptyFile()
{
    Handset handset;
    handset.file(u"no.json"_s, "[]");
    QCOMPARE(handset(u"phonebook write no.json"_s), ExitRefused); // nobody is there to agree
    QCOMPARE(handset(u"--yes phonebook write no.json"_s), ExitWrongUse);
    QVERIFY2(handset.told.contains(u"no.json: there is no contact in it."_s), qPrintable(handset.told));
}

/// A disturbed line makes no undo impossible: a person sees the difference and may want it all the same.
void tst_WriteCommands::undoOnADoubtfulReading()
{
    const QString difference = u"add    B 2\nremove A 1\n"_s;
    const QString doubt = u"the line was disturbed, so what the phone holds is not safely known"_s;
    const Rows<QString, std::optional<QStringList>, ExitStatus, QString> rows{
        {"nobody is asked",
         u"undo --yes"_s,
         {},
         ExitFailed,
         difference +
             u"kalmoctl: could not put back the phonebook as of 2026-11-21  12:00:00, before \"write\": "_s +
             doubt},
        {"a look", u"undo --dry-run"_s, {}, ExitFailed, doubt},
        {"no", u"undo"_s, QStringList{u"n"_s}, ExitFailed,
         u"Put back all the same? [y/N] kalmoctl: could not put back the phonebook as of "_s},
        {"yes, and yes", u"undo"_s, QStringList{u"y"_s, u"y"_s}, ExitDone,
         u"Put back all the same? [y/N] Put back the phonebook as of"_s},
    };
    rows.each([&](const auto& line, const auto& answers, const auto& status, const auto& told) {
        Shell shell;
        operations::Records records(shell.test.context, {u"WOODSTOCK"_s, u"0815"_s});
        records.begin(operations::RecordedList::Phonebook, operations::RecordCause::Write, 1,
                      {{u"phonebook.raw"_s, phonedata::repliesBytes({"^WSRE: 1,B,1,2,0,"})}});
        shell.found("WOODSTOCK");
        shell.identified();
        for (int time = 0; time < 2; ++time)
            shell.script.expect("AT^WSSL=\"TB\"\r")
                .stumble("AT^WSRE\r", "^WSRE: 1,A,1,1,0,")
                .expect("AT^WSRE\r")
                .expect("AT\r");
        if (status == ExitDone) {
            shell.erase().expect("AT^WSWE=1,B,1,2,0,\r\n").expect("AT\r");
            shell.read({"1,B,1,2,0,"});
        }
        shell.answers = answers;
        QCOMPARE(shell.run(line), status);
        QVERIFY2(shell.told.contains(told), qPrintable(shell.told));
        QVERIFY2((shell.printed + shell.told).contains(difference), qPrintable(shell.printed + shell.told));
    });
}

KALMO_TEST(tst_WriteCommands)
#include "tst_WriteCommands.moc"
