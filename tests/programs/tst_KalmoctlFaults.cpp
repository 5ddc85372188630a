// What kalmoctl says where it can't do what it is asked, and what it leaves alone then. In real time.

#include "support/RunningPrograms.h"

#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;

class tst_KalmoctlFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void withoutAPhone_data();
    void withoutAPhone();
    void pipesAndLocales();
    void fullDiskKeepsTheOldFile();
    void portInUse();
    void unknownHandsetAndItsAlias();
    void nobodyAnswers();
};

void tst_KalmoctlFaults::withoutAPhone_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("err");
    QTest::newRow("wrong use")
        << u"phonebook rede"_s << 2
        << u"kalmoctl: unknown command \"phonebook rede\"; did you mean \"phonebook read\"?\n"
           "Try \"kalmoctl --help\".\n"_s;
    QTest::newRow("port that is not there")
        << u"--port HOME/nothing find"_s << 1
        << u"kalmoctl: HOME/nothing does not exist. Is the cable plugged in?\n"_s;
    QTest::newRow("port that is a file") << u"--port HOME/hostile.tel find"_s << 1
                                         << u"kalmoctl: HOME/hostile.tel is not a serial device.\n"_s;
    QTest::newRow("no such number")
        << u"--port 300 find"_s << 2
        << u"kalmoctl: 300 is no port; say a number from 1 to 255, or a device.\n"_s;
    QTest::newRow("number without a device")
        << u"--port 200 find"_s << 1
        << u"kalmoctl: No device is known for COM200. Plug in the cable, or "
           "choose a port with --port.\n"_s;
    QTest::newRow("storage that can't be made")
        << u"--storage /proc/kalmo ports"_s << 2
        << u"kalmoctl: the storage folder /proc/kalmo does not exist and can't be made.\n"_s;
    QTest::newRow("log that can't be written")
        << u"--log HOME ports"_s << 2 << u"kalmoctl: the log HOME can't be written: Is a directory.\n"_s;
    QTest::newRow("hostile .tel") << u"--yes phonebook write HOME/hostile.tel"_s << 2
                                  << u"kalmoctl: HOME/hostile.tel: line 2: expected "
                                     "\"name\",\"number\",\"date\",\"sound\",\"VIP\",\"sound\".\n"_s;
    QTest::newRow("hostile .json") << u"--yes phonebook write HOME/hostile.json"_s << 2
                                   << u"kalmoctl: HOME/hostile.json: line 1: this is no JSON: "
                                      "too deeply nested document.\n"_s;
    QTest::newRow("hostile .prv")
        << u"--yes providers write HOME/hostile.prv"_s << 2
        << u"kalmoctl: HOME/hostile.prv: line 1: there is a control character that can't "
           "be sent to a phone.\n"_s;
    QTest::newRow("nobody to ask") << u"phonebook write HOME/good.tel"_s << 4
                                   << u"kalmoctl: Replace the phonebook in the phone?\n"
                                      "Nobody can answer here; run this on a terminal, or say --yes.\n"_s;
}

void tst_KalmoctlFaults::withoutAPhone()
{
    QFETCH(QString, line);
    RunningPrograms programs;
    programs.makeFile(u"storage/config/Kalmo.ini"_s,
                      "[Ports\n=\x00\xff]\n" + QByteArray(1000000, '=') +
                          "\n[frmEinstellungen]\nComPortNew=nan\nPrefDetectBaud=1e99\n");
    programs.makeFile(u"good.tel"_s, "\"A\",\"1\"\r\n");
    programs.makeFile(u"hostile.tel"_s, "\"A\",\"1\"\r\n" + QByteArray(100000, '"') + "\xff\x00\x1b");
    programs.makeFile(u"hostile.json"_s, QByteArray(1000000, '['));
    programs.makeFile(u"hostile.prv"_s, "\"A\x1a\",\"1\"\r\n");
    const ProgramRun run =
        programs.kalmoctl(line.replace(u"HOME"_s, programs.path({})).replace(u"//"_s, u"/"_s).split(u' '));
    QTEST(run.err, "err");
    QTEST(run.status, "status");
    QCOMPARE(run.out, QString());
}

void tst_KalmoctlFaults::pipesAndLocales()
{
    RunningPrograms programs;
    const ProgramRun pipe =
        programs.run(u"bash"_s, {u"-c"_s, u"kalmoctl --help | true; echo ${PIPESTATUS[0]}"_s});
    QCOMPARE(pipe.out + pipe.err, u"0\n"_s);
    const ProgramRun plain = programs.run(u"env"_s, {u"LC_ALL=C"_s, u"kalmoctl"_s, u"--version"_s});
    QCOMPARE(plain.out + plain.err,
             u"kalmoctl 1.9.8\n"_s); // the toolkit's complaint about the locale is kept away
}

void tst_KalmoctlFaults::fullDiskKeepsTheOldFile()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset({u"--model"_s, u"WOODSTOCK"_s}));
    programs.makeFile(u"book.json"_s, "the old backup");
    programs.beforeStart([] {
        const rlimit little{256, 256}; // bytes of any file
        setrlimit(RLIMIT_FSIZE, &little);
        std::signal(SIGXFSZ, SIG_IGN); // then a write fails, as it does on a full disk
    });
    const ProgramRun run =
        programs.kalmoctl({u"phonebook"_s, u"read"_s, u"-o"_s, programs.path(u"book.json"_s)});
    QCOMPARE(run.err, u"kalmoctl: HOME/book.json could not be written: File too large.\n"_s);
    QCOMPARE(run.status, 1);
    QCOMPARE(programs.contentOf(u"book.json"_s), QByteArray("the old backup"));
    QCOMPARE(programs.stopHandset(), QString());
}

void tst_KalmoctlFaults::portInUse()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset({u"--model"_s, u"WOODY"_s}));
    programs.startKalmoctl({u"--log"_s, programs.path(u"first.log"_s), u"find"_s});
    QTRY_VERIFY(programs.contentOf(u"first.log"_s).contains("eComm.InBufferSize")); // now the port is open
    const ProgramRun second =
        programs.run(u"env"_s, {u"kalmoctl"_s, u"--storage"_s, programs.path(u"other"_s), u"--port"_s,
                                programs.line(), u"find"_s});
    QCOMPARE(second.err, u"kalmoctl: HOME/line is in use by another program, perhaps by Kalmo's window. "
                         "Close that program.\n"_s);
    QCOMPARE(second.status, 1);
    QCOMPARE(programs.finishKalmoctl().status, 0);
    QCOMPARE(programs.stopHandset(), QString());
}

void tst_KalmoctlFaults::unknownHandsetAndItsAlias()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--cgmm"_s, u"GAM"_s, u"--wppn"_s, u"^WPPN: 4,S68X"_s, u"--family"_s, u"5"_s}));
    const ProgramRun unknown = programs.kalmoctl({u"find"_s});
    QCOMPARE(
        unknown.err,
        u"kalmoctl: the device at HOME/line (COM1) is no handset that Kalmo knows. It answers:\n"
        "  ^WPPN: 4,S68X\n"
        "If it is much like a known one, its family (1 to 13) can be set in HOME/storage/config/Kalmo.ini:\n"
        "  [Alias]\n"
        "  BRUSSELS:^WPPN: 4,S68X=FAMILY\n"_s);
    QCOMPARE(unknown.status, 3);

    programs.makeFile(u"storage/config/Kalmo.ini"_s, "[Alias]\nBRUSSELS:^WPPN: 4,S68X=5\n"); // as it was told
    const ProgramRun known = programs.kalmoctl({u"--json"_s, u"find"_s});
    QVERIFY2(known.out.contains(u"\"phoneType\": 5"_s), qPrintable(known.out + known.err));
    QCOMPARE(known.status, 0);
    QCOMPARE(programs.stopHandset(), QString());
}

void tst_KalmoctlFaults::nobodyAnswers()
{
    RunningPrograms programs;
    QVERIFY(programs.startHandset({u"--baud"_s, u"300"_s}));
    const ProgramRun run = programs.kalmoctl({u"--json"_s, u"find"_s});
    QCOMPARE(run.status, 3);
    QCOMPARE(run.out, QString());
    QCOMPARE(
        run.err,
        u"kalmoctl: no handset answers at HOME/line (COM1). Tried: 19200, 115200, 115200 with line feeds "
        u"baud.\n"
        "Is the handset switched on and firmly on its cable, is it the right port (\"kalmoctl ports\" lists\n"
        "them), and is Bluetooth off in the handset while it is on a cable? Switching the handset off and "
        "on\n"
        "and plugging the cable in anew often helps. If a program was broken off in the middle of a "
        "transfer,\n"
        "\"kalmoctl recover\" takes the handset back to commands.\n"_s);
}

QTEST_GUILESS_MAIN(tst_KalmoctlFaults)
#include "tst_KalmoctlFaults.moc"
