// Writes that fail half-way: the message says what the handset holds and where the backup is, and writing the
// backup restores it, even if that has to be done twice.

#include "support/RunningPrograms.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;

namespace {

/// What is said of a write that failed after the first entry.
QString failure(const QString& cause, int wanted)
{
    return u"kalmoctl: the phonebook could not be written: %1.\n"
           "The phone now holds 1 of %2 entries, as far as it confirmed them.\n"
           "What it held before is in HOME/storage/Backup/Inhalt des Telefons vom TIME.tel.\n"
           "To put it back: kalmoctl phonebook write 'HOME/storage/Backup/Inhalt des Telefons vom TIME.tel'\n"_s
               .arg(cause)
               .arg(wanted);
}

} // namespace

class tst_KalmoctlRestore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void backupRestoresWhatWasThere();
};

void tst_KalmoctlRestore::backupRestoresWhatWasThere()
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
    QCOMPARE(refused.err, failure(u"the phone did not take them"_s, 3));
    QCOMPARE(refused.out, u"{\n    \"backup\": \"HOME/storage/Backup/Inhalt des Telefons vom TIME.tel\",\n"
                          "    \"verified\": null,\n    \"written\": 1\n}\n"_s);
    QCOMPARE(refused.status, 1);
    QCOMPARE(programs.namesIn(u"phonebook"_s), QStringList{u"A"_s});
    QCOMPARE(programs.stopHandset(), QString());
    const QString backup = programs.backup();

    // While the backup is written the line drops, behind the command for the second entry.
    QVERIFY(programs.startHandset(model + QStringList{u"--fault"_s, u"hangup-at=14"_s}));
    const ProgramRun dropped = programs.kalmoctl({u"-q"_s, u"-y"_s, u"phonebook"_s, u"write"_s, backup});
    QCOMPARE(dropped.err, failure(u"HOME/line (COM1) is gone"_s, 3));
    QCOMPARE(dropped.status, 1);

    // The cable is plugged in again: the same backup still restores everything.
    const ProgramRun restored = programs.kalmoctl({u"-q"_s, u"-y"_s, u"phonebook"_s, u"write"_s, backup});
    QCOMPARE(restored.err, QString());
    QCOMPARE(restored.out, u"3 entries written, read back and found right.\n"_s);
    QCOMPARE(restored.status, 0);
    QCOMPARE(programs.contentOf(u"handset/phonebook.json"_s), before);
    QCOMPARE(programs.stopHandset(), QString());
}

QTEST_GUILESS_MAIN(tst_KalmoctlRestore)
#include "tst_KalmoctlRestore.moc"
