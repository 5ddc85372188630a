// Writing a list from the command line: nothing is erased that is not saved, and what the phone holds
// afterwards is known.

#include "Shell.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::cli;
using namespace kalmo::tests;

namespace {

using Prepare = std::function<void(Shell&)>;

} // namespace

class tst_WriteCommands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void intoAnEmptyStore();
};

void tst_WriteCommands::writes_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<ExitStatus>("status");
    QTest::addColumn<QString>("value"); // of the JSON result, with B for the backup's path
    QTest::addColumn<QString>("told");  // a part of it
    const QByteArray held1 = "1,A,1,1,0,";
    const QByteArray held2 = "1,B,1,2,0,";
    const QByteArray file = "\"A\",\"1\",\"01.02  03:04\",\"Optisch\"\r\n\"C\",\"3\"\r\n";
    const QByteArray changed = "AT^WSWE=1,A,1,1,9,02010304S\r\n";
    const QByteArray added = "AT^WSWE=1,C,1,3,0,\r\n";
    const auto reading = [=](Shell& shell) {
        shell.found("WOODSTOCK");
        shell.read({held1, held2});
    };
    const auto writing = [=](Shell& shell) {
        reading(shell);
        shell.erase().expect(changed);
    };
    const auto nothing = Prepare([](Shell&) {});

    QTest::newRow("all well") << u"--yes"_s << file << Prepare([=](Shell& shell) {
        writing(shell);
        shell.script.expect(added).expect("AT\r");
        shell.read({"1,A,1,1,9,02010304S", "1,C,1,3,0,"});
    }) << ExitDone << u"{\"backup\":\"B\",\"verified\":2,\"written\":2}"_s
                              << u"        Name  Number  Date          Reminder  VIP  Sound\n"
                                 "add     C     3\n"
                                 "change  A     1       01.02  03:04  Optisch\n"
                                 "  from  A     1\n"
                                 "remove  B     2\n"
                                 "1 to add, 1 to change, 1 to remove; 0 stay as they are.\n"_s;
    QTest::newRow("what would be done") << u"--dry-run"_s << file << Prepare(reading) << ExitDone
                                        << u"{\"add\":1,\"change\":1,\"remove\":1}"_s << QString();
    QTest::newRow("nothing to do") << u"--yes"_s << QByteArray("\"A\",\"1\"\r\n\"B\",\"2\"\r\n")
                                   << Prepare(reading) << ExitDone
                                   << u"{\"backup\":null,\"verified\":2,\"written\":0}"_s << QString();
    QTest::newRow("the user agrees")
        << QString() << file << Prepare([=](Shell& shell) {
               shell.answers = QStringList{u"y"_s};
               writing(shell);
               shell.script.expect(added).expect("AT\r");
               shell.read({"1,A,1,1,9,02010304S", "1,C,1,3,0,"});
           })
        << ExitDone << u"{\"backup\":\"B\",\"verified\":2,\"written\":2}"_s
        << u"Write 2 entries to the phone (1 new, 1 changed, 1 removed)? [y/N] "_s;
    QTest::newRow("the user does not") << QString() << file << Prepare([=](Shell& shell) {
        shell.answers = QStringList{u"n"_s};
        reading(shell);
    }) << ExitRefused << QString() << u"kalmoctl: nothing was changed in the phone.\n"_s;
    QTest::newRow("the user does not want to write what the phone can't hold")
        << QString() << QByteArray("\"A\",\"1\"\r\n\"B[\",\"2\"\r\n") << Prepare([=](Shell& shell) {
               shell.answers = QStringList{u"n"_s};
               reading(shell);
           })
        << ExitRefused << QString()
        << u"The phone may refuse an entry that it can't hold, and then lacks those behind it too. Write all "
           u"the "
           "same? [y/N] "_s;
    QTest::newRow("nobody to ask")
        << QString() << file << nothing << ExitRefused << QString()
        << u"kalmoctl: Replace the phonebook in the phone?\nNobody can answer here"_s;
    QTest::newRow("bad file") << u"--yes"_s << QByteArray("\"A\",\"1\"\r\nB\r\n") << nothing << ExitWrongUse
                              << QString() << u"book.tel: line 2: expected"_s;
    QTest::newRow("warning") << u"--dry-run"_s << QByteArray("\"A\",\"1\"\r\n\"B[\",\"2\"\r\n")
                             << Prepare(reading) << ExitDone << u"{\"add\":1,\"change\":0,\"remove\":1}"_s
                             << u"Warning: entry 2 (B[): the phone can't hold \"[\" in a name.\n"_s;
    QTest::newRow("no backup, no write") << u"--yes"_s << file << Prepare([=](Shell& shell) {
        QDir(shell.test.storage).rmdir(u"Backup"_s);
        reading(shell);
    }) << ExitFailed << QString() << u"No such file or directory.\nNothing was changed in the phone.\n"_s;
    const auto readingTwice = [](Shell& shell) {
        shell.found("WOODSTOCK");
        for (int time = 0; time < 2; ++time)
            shell.script.expect("AT^WSSL=\"TB\"\r").stumble("AT^WSRE\r").expect("AT\r");
    };
    QTest::newRow("doubtful twice, and the user does not want it")
        << QString() << file << Prepare([=](Shell& shell) {
               shell.answers = QStringList{u"n"_s};
               readingTwice(shell);
           })
        << ExitFailed << QString()
        << u"so the backup may lack an entry. Write all the same? [y/N] kalmoctl: the line"_s;
    QTest::newRow("doubtful twice is nothing that --yes could answer")
        << u"--yes"_s << file << Prepare(readingTwice) << ExitFailed << QString()
        << u"so what the phone holds is not safely known.\nNothing was changed in it.\n"_s;
    QTest::newRow("error at the second entry")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.refuse(added).expect("AT\r");
           })
        << ExitFailed << u"{\"backup\":\"B\",\"verified\":null,\"written\":1}"_s
        << u"kalmoctl: the phonebook could not be written: the phone did not take them.\n"
           "The phone now holds 1 of 2 entries, as far as it confirmed them.\nWhat it held before is in "_s;
    QTest::newRow("error in the first reading") << u"--yes"_s << file << Prepare([](Shell& shell) {
        shell.found("WOODSTOCK").refuse("AT^WSSL=\"TB\"\r");
    }) << ExitFailed << QString() << u"the phone stopped answering.\nNothing was changed in the phone.\n"_s;
    QTest::newRow("error in the erase")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               reading(shell);
               shell.script.refuse("AT^WSEL=\"TB\"\r").expect("AT\r");
           })
        << ExitFailed << u"{\"backup\":\"B\",\"verified\":null,\"written\":0}"_s
        << u"What the phone holds now is not known.\nWhat it held before is in "_s;
    QTest::newRow("interrupted")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.then([&shell] { shell.stop.checked = true; }).expect("AT\r");
           })
        << ExitRefused << u"{\"backup\":\"B\",\"verified\":null,\"written\":1}"_s
        << u"kalmoctl: the phonebook could not be written: interrupted.\nThe phone now holds 1 of 2 entries, as far as it confirmed them.\n"_s;
    QTest::newRow("line that drops")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.then([&shell] { shell.port.Close(); });
               shell.port.expect("AT\r");
           })
        << ExitFailed << u"{\"backup\":\"B\",\"verified\":null,\"written\":0}"_s
        << u"/dev/ttyX (COM1) is gone.\nThe phone now holds 0 of 2 entries, as far as it confirmed them.\n"_s;
    QTest::newRow("end that is not confirmed, found right all the same")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.expect(added).refuse("AT\r");
               shell.read({"1,A,1,1,9,02010304S", "1,C,1,3,0,"});
           })
        << ExitDone << u"{\"backup\":\"B\",\"verified\":2,\"written\":2}"_s << QString();
    QTest::newRow("the phone holds something else")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.expect(added).expect("AT\r");
               shell.read({"1,A,1,1,0,", "1,D,1,3,0,"});
           })
        << ExitFailed << u"{\"backup\":\"B\",\"verified\":0,\"written\":2}"_s
        << u"kalmoctl: the phone does not hold what was written. This differs:\n"
           "             Name  Number  Date          Reminder  VIP  Sound\n"
           "missing      C     3\n"
           "written      A     1       01.02  03:04  Optisch\n"
           "  holds      A     1\n"
           "not written  D     3\n"
           "What it held before is in "_s;
    QTest::newRow("not read back")
        << u"--yes"_s << file << Prepare([=](Shell& shell) {
               writing(shell);
               shell.script.expect(added).expect("AT\r").refuse("AT^WSSL=\"TB\"\r");
           })
        << ExitFailed << u"{\"backup\":\"B\",\"verified\":null,\"written\":2}"_s
        << u"kalmoctl: 2 entries written, but not read back to be compared.\nWhat it held before is in "_s;
}

void tst_WriteCommands::writes()
{
    QFETCH(QString, options);
    QFETCH(QByteArray, file);
    QFETCH(Prepare, prepare);
    QFETCH(QString, value);
    QFETCH(QString, told);
    Shell shell;
    prepare(shell);
    const QString path = shell.file(u"book.tel"_s, file);
    QTEST(shell.run((u"--json phonebook write "_s + path + u' ' + options).trimmed()), "status");
    const QString backup = shell.test.storage + u"/Backup/"_s + shell.backups().value(0);
    QCOMPARE(shell.value().replace(backup, u"B"_s), value);
    QVERIFY2(shell.told.contains(told), qPrintable(shell.told));
    if (value.contains(u"\"B\""_s))
        QCOMPARE(TestContext::contentOf(backup),
                 QByteArray("\"A\",\"1\",\"\",\"\",\"\",\"\"\r\n\"B\",\"2\",\"\",\"\",\"\",\"\"\r\n"));
}

void tst_WriteCommands::intoAnEmptyStore()
{
    Shell shell;
    shell.found("WOODSTOCK").expect("AT^WSSL=\"NE\"\r").expect("AT^WSRE\r").expect("AT\r");
    shell.script.expect("AT^WSEL=\"NE\"\r").expect("AT\r").expect("AT^WSSL=\"NE\"\r");
    shell.script.expect("AT^WSWE=1,A,1,1\r").expect("AT\r");
    shell.script.expect("AT^WSSL=\"NE\"\r")
        .expect("AT^WSRE\r", "^WSRE: 1,A,1,1")
        .expect("AT^WSRE\r")
        .expect("AT\r");
    const QString path = shell.file(u"list.json"_s, R"([{"name":"A","number":"1"}])");
    QCOMPARE(shell.run(u"--yes providers write "_s + path), ExitDone);
    QCOMPARE(shell.printed, u"1 entry written, read back and found right.\n"_s);
    QCOMPARE(shell.backups(), QStringList{}); // an empty store leaves nothing to save
}

QTEST_GUILESS_MAIN(tst_WriteCommands)
#include "tst_WriteCommands.moc"
