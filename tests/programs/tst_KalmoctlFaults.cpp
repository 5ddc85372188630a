// Messages of kalmoctl where it can't do what it is asked, and the things that it leaves alone then. In real
// time.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

class tst_KalmoctlFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAPhone()
    {
        const Rows<QString, int, QString> rows{
            {"port that is not there", u"--port HOME/nothing find"_s, 1,
             u"kalmoctl: could not open HOME/nothing: it does not exist. Is the cable plugged in?\n"_s},
            {"port that is a file", u"--port HOME/hostile.tel find"_s, 1,
             u"kalmoctl: could not open HOME/hostile.tel: it is not a serial device.\n"_s},
            {"storage that can't be made", u"--storage /proc/kalmo ports"_s, 2,
             u"kalmoctl: could not make the storage folder /proc/kalmo.\n"_s},
            {"log that can't be written", u"--log HOME ports"_s, 2,
             u"kalmoctl: could not write the log HOME: Is a directory.\n"_s},
            {"log that is the user's list", u"--log HOME/hostile.tel phonebook write HOME/hostile.tel"_s, 2,
             u"kalmoctl: could not log to HOME/hostile.tel: the command uses that file itself.\n"_s},
            {"log on a full disk", u"--port HOME/nothing --log /dev/full find"_s, 1,
             u"kalmoctl: could not open HOME/nothing: it does not exist. Is the cable plugged in?\n"
             "kalmoctl: could not write all lines of the log /dev/full: No space left on device.\n"_s},
            {"hostile .json", u"--yes phonebook write HOME/hostile.json"_s, 2,
             u"kalmoctl: HOME/hostile.json: line 1: this is no JSON: too deeply nested document.\n"_s},
        };
        rows.each([&](const auto& line, const auto& status, const auto& err) {
            RunningPrograms programs;
            programs.makeFile(u"storage/config/Kalmo.ini"_s,
                              "[Ports\n=\x00\xff]\n" + QByteArray(1000000, '=') +
                                  "\n[frmEinstellungen]\nComPortNew=nan\nPrefDetectBaud=1e99\n");
            programs.makeFile(u"hostile.tel"_s, "\"A\",\"1\"\r\n" + QByteArray(100000, '"') + "\xff\x00\x1b");
            programs.makeFile(u"hostile.json"_s, QByteArray(1000000, '['));
            const ProgramRun run = programs.kalmoctl(
                QString(line).replace(u"HOME"_s, programs.path({})).replace(u"//"_s, u"/"_s).split(u' '));
            QCOMPARE(run.err, err);
            QCOMPARE(run.status, status);
            QCOMPARE(run.out, QString());
        });
    }

    void pipesAndLocales()
    {
        RunningPrograms programs;
        const ProgramRun pipe =
            programs.run(u"bash"_s, {u"-c"_s, u"kalmoctl --help | true; echo ${PIPESTATUS[0]}"_s});
        QCOMPARE(pipe.out + pipe.err, u"0\n"_s);
        const ProgramRun plain = programs.run(u"env"_s, {u"LC_ALL=C"_s, u"kalmoctl"_s, u"--version"_s});
        QCOMPARE(plain.out + plain.err,
                 u"kalmoctl 1.9.8\n"_s); // the toolkit's complaint about the locale is kept away
    }

    /// The handset falls silent before it confirms that its store is open. The last command closes it.
    void closesAStoreThatMayBeOpen()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({u"--model"_s, u"WOODSTOCK"_s, u"--fault"_s, u"silent-after=5"_s}));
        const ProgramRun run = programs.kalmoctl({u"--log"_s, u"log"_s, u"phonebook"_s, u"read"_s});
        QCOMPARE(run.err, u"kalmoctl: could not read the phonebook: the phone gave no entry.\n"_s);
        QCOMPARE(run.status, 1);
        const QByteArrayList lines = programs.contentOf(u"log"_s).split('\n');
        const auto isSent = [](const QByteArray& line) { return line.contains("Tx:\t"); };
        const auto last = std::find_if(lines.rbegin(), lines.rend(), isSent);
        QVERIFY(last != lines.rend());
        QVERIFY2(last->trimmed().endsWith("Tx:\tAT #vbCR#"), last->constData());
        QCOMPARE(programs.stopHandset(), QString());
    }

    void portInUse()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({u"--model"_s, u"WOODY"_s}));
        programs.startKalmoctl({u"--log"_s, programs.path(u"first.log"_s), u"find"_s});
        QTRY_VERIFY(
            programs.contentOf(u"first.log"_s).contains("eComm.InBufferSize")); // now the port is open
        const ProgramRun second =
            programs.run(u"env"_s, {u"kalmoctl"_s, u"--storage"_s, programs.path(u"other"_s), u"--port"_s,
                                    programs.line(), u"find"_s});
        QCOMPARE(second.err,
                 u"kalmoctl: could not open HOME/line: another program uses it, perhaps Kalmo's window. "
                 "Close that program.\n"_s);
        QCOMPARE(second.status, 1);
        QCOMPARE(programs.finishKalmoctl().status, 0);
        QCOMPARE(programs.stopHandset(), QString());
    }
};

KALMO_TEST(tst_KalmoctlFaults)
#include "tst_KalmoctlFaults.moc"
