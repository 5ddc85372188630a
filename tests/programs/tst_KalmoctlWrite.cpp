// kalmoctl writes a list in real time: what it says, what the handset then holds, and what an interruption
// leaves.

#include "support/RunningPrograms.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;

namespace {

const QByteArray seed = R"({"phonebook": [{"name": "Alt", "number": "1"}, {"name": "Jörg", "number": "2"}]})";
const QByteArray heldAsTel = "\"Alt\",\"1\",\"\",\"\",\"\",\"\"\r\n\"J\xf6rg\",\"2\",\"\",\"\",\"\",\"\"\r\n";

QByteArray manyEntries(int count)
{
    QByteArray lines;
    for (int number = 1; number <= count; ++number)
        lines += "\"N" + QByteArray::number(number) + "\",\"1\"\r\n";
    return lines;
}

} // namespace

class tst_KalmoctlWrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void replacesTheList();
    void interruptedBetweenTwoEntries();
    void noBackupNoErase();
};

void tst_KalmoctlWrite::replacesTheList()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--model"_s, u"PICASSO"_s, u"--seed"_s, programs.makeFile(u"seed.json"_s, seed)}));
    const QString file = programs.makeFile(
        u"new.json"_s,
        R"([{"name": "Jörg", "number": "2", "date": "24.12  08:30", "dateSound": "Melodie 3", "vip": true, "vipSound": "Optisch"},
            {"name": "Neu", "number": "3"}])");
    const ProgramRun run = programs.kalmoctl({u"--yes"_s, u"phonebook"_s, u"write"_s, file});
    QCOMPARE(run.err,
             u"What the phone holds is saved in HOME/storage/Backup/Inhalt des Telefons vom TIME.tel.\n"
             "        Name  Number  Date          Reminder   VIP  Sound\n"
             "add     Neu   3\n"
             "change  Jörg  2       24.12  08:30  Melodie 3  yes  Optisch\n"
             "  from  Jörg  2\n"
             "remove  Alt   1\n"
             "1 to add, 1 to change, 1 to remove; 0 stay as they are.\n"_s);
    QCOMPARE(run.out, u"2 entries written, read back and found right.\n"_s);
    QCOMPARE(run.status, 0);
    QCOMPARE(programs.namesIn(u"phonebook"_s), (QStringList{u"Jörg"_s, u"Neu"_s}));
    QCOMPARE(programs.stopHandset(), QString());
}

void tst_KalmoctlWrite::interruptedBetweenTwoEntries()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--model"_s, u"WOODSTOCK"_s, u"--seed"_s, programs.makeFile(u"seed.json"_s, seed)}));
    programs.startKalmoctl({u"--quiet"_s, u"--yes"_s, u"phonebook"_s, u"write"_s,
                            programs.makeFile(u"new.tel"_s, manyEntries(12))});
    QTRY_VERIFY_WITH_TIMEOUT(programs.namesIn(u"phonebook"_s).contains(u"N2"_s), 30000);
    ::kill(static_cast<pid_t>(programs.kalmoctlId()), SIGINT);
    ::kill(static_cast<pid_t>(programs.kalmoctlId()), SIGINT); // a store is open: it is closed all the same
    const ProgramRun run = programs.finishKalmoctl();
    const auto written = programs.namesIn(u"phonebook"_s).size();
    QVERIFY(written >= 2 && written < 12);
    QCOMPARE(
        run.err,
        u"kalmoctl: the phonebook could not be written: interrupted.\n"
        "The phone now holds %1 of 12 entries, as far as it confirmed them.\n"
        "What it held before is in HOME/storage/Backup/Inhalt des Telefons vom TIME.tel.\n"
        "To put it back: kalmoctl phonebook write 'HOME/storage/Backup/Inhalt des Telefons vom TIME.tel'\n"_s
            .arg(written));
    QCOMPARE(run.status, 4);
    QFile backup(programs.backup());
    QVERIFY(backup.open(QIODevice::ReadOnly));
    QCOMPARE(backup.readAll(), heldAsTel);
    QCOMPARE(programs.stopHandset(), QString()); // no command came while the store was open
}

void tst_KalmoctlWrite::noBackupNoErase()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--model"_s, u"WOODSTOCK"_s, u"--seed"_s, programs.makeFile(u"seed.json"_s, seed)}));
    programs.makeFile(u"storage/Backup"_s, {}); // where the folder should be
    const ProgramRun run = programs.kalmoctl(
        {u"--yes"_s, u"phonebook"_s, u"write"_s, programs.makeFile(u"new.tel"_s, manyEntries(1))});
    QCOMPARE(run.err,
             u"kalmoctl: what the phone holds could not be saved in HOME/storage/Backup/Inhalt des Telefons "
             "vom TIME.tel: Not a directory.\nNothing was changed in the phone.\n"_s);
    QCOMPARE(run.status, 1);
    QCOMPARE(programs.namesIn(u"phonebook"_s), (QStringList{u"Alt"_s, u"Jörg"_s}));
    QCOMPARE(programs.stopHandset(), QString());
}

QTEST_GUILESS_MAIN(tst_KalmoctlWrite)
#include "tst_KalmoctlWrite.moc"
