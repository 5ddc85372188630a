// Who may use the line when: AT commands while the phone takes bytes for frames, exchanges inside an
// exchange, and answers that come too late.

#include "link/mdlComm.h"
#include "support/ScriptedPort.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo::tests;
using kalmo::link::Line;
using kalmo::link::LineMode;

namespace {

const QByteArray signal = "AT+CSQ\r";
const QByteArray signalAnswer = "AT+CSQ\r\r\n+CSQ: 20,99\r\n\r\nOK\r\n";

} // namespace

class tst_ObexLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void commandsNeedTextMode_data();
    void commandsNeedTextMode();
    void nestedExchangeStealsNothing();
    void lateBytesAnswerNothing();
};

void tst_ObexLine::commandsNeedTextMode_data()
{
    QTest::addColumn<LineMode>("mode");
    QTest::addColumn<bool>("goesOut");
    QTest::newRow("text") << LineMode::Text << true;
    QTest::newRow("switching") << LineMode::Switching << false;
    QTest::newRow("data") << LineMode::Data << false;
}

void tst_ObexLine::commandsNeedTextMode()
{
    QFETCH(LineMode, mode);
    QFETCH(bool, goesOut);
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    Line line(test.context, port);
    line.setMode(mode);
    if (goesOut)
        port.expect(signal, signalAnswer);
    QByteArray answer = "old";
    QCOMPARE(line.exchange(answer, signal, 1), goesOut);
    QCOMPARE(answer, goesOut ? "+CSQ: 20,99"_ba : ""_ba);
    QCOMPARE(test.logged().contains(u"Warning:: Tx refused, the line carries data"_s), !goesOut);
    if (goesOut)
        line.TxDirect("AT^SQWE=3\r\n"); // raw bytes have no place among AT commands
    if (mode != LineMode::Switching)
        QCOMPARE(line.RxDirect(answer, 1), kalmo::link::RxDirectTimeout);
    QVERIFY(goesOut || test.clock.elapsed() == 0); // no recovery: its ATZ would be a frame of 21 kilobytes

    line.ConfigurePort(); // a port that was opened anew starts with AT commands again
    QCOMPARE(line.mode(), LineMode::Text);
}

void tst_ObexLine::nestedExchangeStealsNothing()
{
    TestContext test;
    test.startLog();
    ScriptedPort port(test);
    Line line(test.context, port);
    int nested = 0;
    const auto intrude = [&] {
        ++nested;
        QVERIFY(line.isWaiting());
        QByteArray stolen = "old";
        QVERIFY(!line.exchange(stolen, "AT+CBC\r", 1));
        QCOMPARE(stolen, ""_ba);
        line.TxDirect("\x83"_ba);
        QCOMPARE(line.RxDirect(stolen, 1), kalmo::link::RxDirectTimeout);
    };
    QByteArray answer;

    port.expect(signal, signalAnswer, 0.5);
    test.clock.after(0.2, intrude);
    QVERIFY(line.exchange(answer, signal, 1));
    QCOMPARE(answer, "+CSQ: 20,99"_ba);

    port.expect("AT^SQWE=3\r\n", "OK\r\n", 0.5);
    test.clock.after(0.2, intrude);
    line.setMode(LineMode::Switching);
    line.TxDirect("AT^SQWE=3\r\n");
    QCOMPARE(line.RxDirect(answer, 0), kalmo::link::RxDirectAnswered);
    line.setMode(LineMode::Text);

    // An intruder during the recovery of a command that was not answered.
    port.expect(signal).expect("ATZ\r").expect("ATZ\r").expect(signal, signalAnswer);
    test.clock.after(1.3, intrude);
    QVERIFY(line.exchange(answer, signal, 1));

    QCOMPARE(nested, 3);
    QVERIFY(!line.isWaiting());
    QCOMPARE(test.logged().filter(u"refused, another exchange is under way"_s).size(), 12);
}

void tst_ObexLine::lateBytesAnswerNothing()
{
    TestContext test;
    ScriptedPort port(test);
    Line line(test.context, port);
    line.setMode(LineMode::Data);
    // The bytes of an answer that nobody waits for any more are still coming when the next request is made.
    port.say("\xA0\x00\x03\x01"_ba);
    port.say("\x02"_ba, 0.25);
    port.say("\x03"_ba, 0.5);
    port.expect("\x83\x00\x03"_ba, "\x90"_ba, 0.1);
    line.markDirty();
    line.TxDirect("\x83\x00\x03"_ba);
    QVERIFY2(test.clock.elapsed() > 0.79 && test.clock.elapsed() < 0.9,
             qPrintable(QString::number(test.clock.elapsed())));
    QCOMPARE(port.InCount(), 0);

    // It costs nothing the next time, and a phone that never falls silent does not hold up the request for
    // good.
    test.clock.WaitSeconds(0.2);
    port.expect("\x81\x00\x03"_ba);
    const double before = test.clock.elapsed();
    line.TxDirect("\x81\x00\x03"_ba);
    QCOMPARE(test.clock.elapsed(), before);
    for (int index = 0; index < 100; ++index)
        port.say("x", index * 0.1);
    port.expect("\xFF\x00\x03"_ba);
    line.markDirty();
    line.TxDirect("\xFF\x00\x03"_ba);
    QVERIFY(test.clock.elapsed() - before < 3.5);
}

QTEST_GUILESS_MAIN(tst_ObexLine)
#include "tst_ObexLine.moc"
