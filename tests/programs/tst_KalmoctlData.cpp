// Files as users handle them, and the state after a run that was stopped. In real time.

#include "support/Rows.h"
#include "support/RunningPrograms.h"

#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;

class tst_KalmoctlData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void filesThereAndBack()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({u"--model"_s, u"SL450HX"_s}));
        const QByteArray content(20000, 'w');
        programs.makeFile(u"Grüße.bmp"_s, content);
        const ProgramRun put = programs.kalmoctl(
            {u"files"_s, u"put"_s, programs.path(u"Grüße.bmp"_s), u"--to"_s, u"Pictures"_s});
        QCOMPARE(put.err, u"HOME/Grüße.bmp sent to /Pictures/Grüße.bmp.\n"_s);
        QCOMPARE(put.status, 0);
        QVERIFY(QFile::remove(programs.path(u"Grüße.bmp"_s)));
        const ProgramRun got = programs.kalmoctl({u"files"_s, u"get"_s, u"Mobile:\\Pictures\\Grüße.bmp"_s});
        QCOMPARE(got.err, u"/Pictures/Grüße.bmp saved in HOME/Grüße.bmp.\n"_s);
        QCOMPARE(programs.contentOf(u"Grüße.bmp"_s), content);
        QCOMPARE(programs.stopHandset(), QString());
    }

    void brokenOffInTheMiddle()
    {
        const Rows<int, int, QString, QString> rows{
            {"interrupted: the data channel is closed",
             SIGINT,
             4,
             u"kalmoctl: could not access the phone: cancelled by the user.\n"
             "kalmoctl: could not send HOME/big.bin to /big.bin: interrupted.\n"
             "kalmoctl: interrupted.\n"_s,
             {}},
            {"killed: the next run takes the handset back",
             SIGKILL,
             -1,
             {},
             u"The last run did not end its data session with ^WPPN: 7,SL450HX; taking the handset back to "
             "commands.\n"_s},
        };
        rows.each([&](const auto& signal, const auto& status, const auto& err, const auto& nextErr) {
            RunningPrograms programs;
            QVERIFY(programs.startHandset({u"--model"_s, u"SL450HX"_s}));
            const QString big = programs.makeFile(u"big.bin"_s, QByteArray(400000, 'x'));
            programs.startKalmoctl({u"--log"_s, programs.path(u"log"_s), u"files"_s, u"put"_s, big});
            QTRY_VERIFY_WITH_TIMEOUT(programs.contentOf(u"log"_s).count("RE=144 RXall") > 3, 30000);
            kill(static_cast<pid_t>(programs.kalmoctlId()), signal);
            const ProgramRun broken = programs.finishKalmoctl();
            QCOMPARE(broken.status, status);
            QCOMPARE(broken.err, err);
            const ProgramRun next = programs.kalmoctl({u"--json"_s, u"files"_s, u"ls"_s});
            QCOMPARE(next.err, nextErr);
            QCOMPARE(next.status, 0);
            QVERIFY2(!next.out.contains(u"big.bin"_s), qPrintable(next.out));
            QCOMPARE(programs.stopHandset(), QString());
        });
    }
};

QTEST_GUILESS_MAIN(tst_KalmoctlData)
#include "tst_KalmoctlData.moc"
