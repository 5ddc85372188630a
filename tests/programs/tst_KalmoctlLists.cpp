// kalmoctl reads and writes lists in real time: what it says, what the handset then holds, and what an
// interruption or a fault leaves: writing the backup restores it, even if that has to be done twice.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

#include <csignal>

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

/// Text about a write that failed after so many entries.
QString failure(const QString& cause, qsizetype written, int wanted)
{
    return u"kalmoctl: could not write the phonebook: %1.\n"
           "The phone confirmed %2 of %3 entries.\n"
           "What it held before is in HOME/storage/Backup/Inhalt des Telefons vom TIME.tel.\n"
           "To put it back: kalmoctl --port 'HOME/line' --storage 'HOME/storage' phonebook write "
           "'HOME/storage/Backup/Inhalt des Telefons vom TIME.tel'\n"_s.arg(cause)
               .arg(written)
               .arg(wanted);
}

} // namespace

class tst_KalmoctlLists : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void interruptedBetweenTwoEntries();
    void backupRestoresWhatWasThere();
};

void tst_KalmoctlLists::interruptedBetweenTwoEntries()
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
    QCOMPARE(run.err, failure(u"interrupted"_s, written, 12));
    QCOMPARE(run.status, 4);
    QFile backup(programs.backup());
    QVERIFY(backup.open(QIODevice::ReadOnly));
    QCOMPARE(backup.readAll(), heldAsTel);
    QCOMPARE(programs.stopHandset(), QString()); // no command came while the store was open
}

void tst_KalmoctlLists::backupRestoresWhatWasThere()
{
    RunningPrograms programs;
    const QString seed = programs.makeFile(u"seed.json"_s, R"({"phonebook": [
        {"name": "Mutter \"M\"", "number": "1", "anniversary": "24.12. 08:30", "reminder": "S"},
        {"name": "Jörg", "number": "2"}, {"name": "Anja", "number": "3"}]})");
    const QStringList model{u"--model"_s, u"WOODSTOCK"_s};
    const QString file = programs.makeFile(u"new.tel"_s, "\"A\",\"1\"\r\n\"B\",\"2\"\r\n\"C\",\"3\"\r\n");

    // The second entry is refused.
    QVERIFY(programs.startHandset(model + QStringList{u"--seed"_s, seed, u"--fault"_s, u"write-error=2"_s}));
    const QByteArray before = programs.contentOf(u"handset/phonebook.json"_s);
    const ProgramRun refused =
        programs.kalmoctl({u"-q"_s, u"--json"_s, u"-y"_s, u"phonebook"_s, u"write"_s, file});
    QCOMPARE(refused.err, failure(u"the phone refused an entry"_s, 1, 3));
    QCOMPARE(refused.out, u"{\n    \"backup\": \"HOME/storage/Backup/Inhalt des Telefons vom TIME.tel\",\n"
                          "    \"state\": \"unknown\",\n    \"verified\": null,\n    \"written\": 1\n}\n"_s);
    QCOMPARE(refused.status, 1);
    QCOMPARE(programs.namesIn(u"phonebook"_s), QStringList{u"A"_s});
    QCOMPARE(programs.stopHandset(), QString());
    const QString backup = programs.backup();

    // While the backup is written the line drops, after the command for the second entry.
    QVERIFY(programs.startHandset(model + QStringList{u"--fault"_s, u"hangup-at=16"_s}));
    const ProgramRun dropped = programs.kalmoctl({u"-q"_s, u"-y"_s, u"phonebook"_s, u"write"_s, backup});
    QCOMPARE(dropped.err, failure(u"HOME/line is gone"_s, 1, 3)
                              .replace(u"3 entries.\n"_s,
                                       u"3 entries. It may hold one more, which it did not confirm.\n"_s));
    QCOMPARE(dropped.status, 1);

    // The cable is plugged in again: the same backup still restores everything.
    const ProgramRun restored = programs.kalmoctl({u"-q"_s, u"-y"_s, u"phonebook"_s, u"write"_s, backup});
    QCOMPARE(restored.err, QString());
    QCOMPARE(restored.out, u"3 entries written, read back and found right.\n"_s);
    QCOMPARE(restored.status, 0);
    QCOMPARE(programs.contentOf(u"handset/phonebook.json"_s), before);
    const ProgramRun book =
        programs.kalmoctl({u"phonebook"_s, u"read"_s, u"-o"_s, programs.path(u"b.tel"_s)});
    QCOMPARE(book.err, u"3 entries saved in HOME/b.tel.\n"_s);
    QFile saved(backup);
    QVERIFY(saved.open(QIODevice::ReadOnly));
    QCOMPARE(programs.contentOf(u"b.tel"_s), saved.readAll());
    QCOMPARE(programs.stopHandset(), QString());
}

KALMO_TEST(tst_KalmoctlLists)
#include "tst_KalmoctlLists.moc"
