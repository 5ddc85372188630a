#include "app/SettingsKeys.h"
#include "link/mdlComm.h"
#include "support/RecordedProgress.h"
#include "support/ScriptedPort.h"

#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

const QByteArray atz = "ATZ\r";
const QByteArray atzOk = "ATZ\r\r\nOK\r\n";

struct Exchange
{
    QByteArray command;
    QByteArray answer;
    bool lfMode = false;
    bool keepTail = false;
    bool good = true;
    QByteArray payload = {};
};

QByteArray asSent(const Exchange& exchange)
{
    return exchange.lfMode && !exchange.command.endsWith('\n') ? exchange.command + '\n' : exchange.command;
}

/// The two ATZ that stand between two attempts.
void expectRecovery(ScriptedPort& port)
{
    port.expect(atz, atzOk).expect(atz, atzOk);
}

} // namespace

class tst_Line : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAreCutOut_data();
    void answersAreCutOut();
    void refusalsAreRepeated_data();
    void refusalsAreRepeated();
    void silenceCostsThreeAttempts();
    void attemptsAreCountedTogether();
    void repeatsAreReported();
    void oldBytesAnswerNothing();
    void oneReadIsCapped();
    void aWaitOverMidnightDoesNotTimeOut();
    void queueThatNeverEmpties();
    void rawSendGoesOut();
    void failedRawSendEndsTheProgram_data();
    void failedRawSendEndsTheProgram();
    void rawReceive_data();
    void rawReceive();
    void portNames();
};

void tst_Line::answersAreCutOut_data()
{
    QTest::addColumn<Exchange>("exchange");
    const auto row = [](const char* name, const Exchange& exchange) { QTest::newRow(name) << exchange; };

    row("payload", {.command = "AT+CGMR\r", .answer = "AT+CGMR\r\r\n12\r\n\r\nOK\r\n", .payload = "12"});
    row("OK alone", {.command = "ATZ\r", .answer = atzOk});
    row("OK alone, tail kept", {.command = "AT^WSRE\r", .answer = "AT^WSRE\r\r\nOK\r\n", .keepTail = true});
    row("tail kept", {.command = "AT^WSRE\r",
                      .answer = "AT^WSRE\r\r\n^WSRE: 1,A,1,1\r\n\r\nOK\r\n",
                      .keepTail = true,
                      .payload = "^WSRE: 1,A,1,1\r\n"});
    row("several lines", {.command = "AT^WFFO=\"3\"\r",
                          .answer = "AT^WFFO=\"3\"\r\r\n^WFFO: a\r\n^WFFO: b\r\n\r\nOK\r\n",
                          .payload = "^WFFO: a\r\n^WFFO: b"});
    row("LF mode: the echoed line feed goes", {.command = "AT+CGMM\r",
                                               .answer = "AT+CGMM\r\n\r\nKilby\r\n\r\nOK\r\n",
                                               .lfMode = true,
                                               .payload = "Kilby"});
    row("LF mode: OK alone", {.command = "ATZ\r", .answer = "ATZ\r\n\r\nOK\r\n", .lfMode = true});
    row("LF mode: CR LF in the command is not doubled", {.command = "AT+X\r\n",
                                                         .answer = "AT+X\r\n\r\n\nval\r\n\r\nOK\r\n",
                                                         .lfMode = true,
                                                         .payload = "val"});
    row("OK within the answer does not end it",
        {.command = "AT+N\r", .answer = "AT+N\r\r\nOK OKTAVIA\r\n\r\nOK\r\n", .payload = "OK OKTAVIA"});
    row("prompt", {.command = "AT+P\r", .answer = "AT+P\r\r\r\n> "});
    row("ends in RED", {.command = "AT+D\r", .answer = "AT+D\r\r\nabcRED\r\n", .payload = ""});
    row("no echo: payload is lost to it",
        {.command = "AT+CGMM\r", .answer = "\r\nWOODSTOCK\r\n\r\nOK\r\n", .payload = "K"});
    row("umlauts and other bytes",
        {.command = "AT\r", .answer = "AT\r\r\n\xFC\x81\x01\r\n\r\nOK\r\n", .payload = "\xFC\x81\x01"});
    row("extended error: at once, answer untouched",
        {.command = "AT+X\r", .answer = "AT+X\r\r\n+CME ERROR: 3\r\n", .good = false, .payload = "before"});
}

void tst_Line::answersAreCutOut()
{
    QFETCH(Exchange, exchange);
    inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
        test.sy.blnTxLfTerminator = exchange.lfMode;
        port.expect(asSent(exchange), exchange.answer);
        link::Line line(test.context, port);
        QByteArray answer = "before";
        line.Tx(exchange.command);
        QCOMPARE(line.Rx(answer, exchange.command, 1, exchange.keepTail), exchange.good);
        QCOMPARE(answer, exchange.payload);
        QCOMPARE(line.repeats(), 0);
    });
}

void tst_Line::refusalsAreRepeated_data()
{
    QTest::addColumn<QByteArray>("refusal");
    QTest::newRow("ERROR") << QByteArray("AT+X\r\r\nERROR\r\n");
    QTest::newRow("a word that ends in ORD") << QByteArray("AT+X\r\r\nRECORD\r\n");
}

void tst_Line::refusalsAreRepeated()
{
    QFETCH(QByteArray, refusal);
    inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
        port.expect("AT+X\r", refusal);
        expectRecovery(port);
        port.expect("AT+X\r", refusal);
        expectRecovery(port);
        port.expect("AT+X\r", refusal);
        link::Line line(test.context, port);
        QByteArray answer = "before";
        QVERIFY(!line.exchange(answer, "AT+X\r", 8));
        QCOMPARE(answer, QByteArray());
    });
}

void tst_Line::silenceCostsThreeAttempts()
{
    TestContext test;
    ScriptedPort port(test);
    port.expect("AT\r");
    port.expect(atz).expect(atz);
    port.expect("AT\r");
    port.expect(atz).expect(atz);
    port.expect("AT\r");
    link::Line line(test.context, port);
    QByteArray answer = "before";
    QVERIFY(!line.exchange(answer, "AT\r", 1));
    QCOMPARE(answer, QByteArray());
    // Three seconds of waiting and two recoveries of 0.8 seconds.
    QVERIFY2(std::abs(test.clock.elapsed() - 4.6) < 0.02, qPrintable(QString::number(test.clock.elapsed())));
}

void tst_Line::attemptsAreCountedTogether()
{
    TestContext test;
    ScriptedPort port(test);
    port.expect("AT\r"); // silence
    expectRecovery(port);
    port.expect("AT\r", "AT\r\r\nERROR\r\n");
    expectRecovery(port);
    port.expect("AT\r"); // silence again
    link::Line line(test.context, port);
    QByteArray answer;
    QVERIFY(!line.exchange(answer, "AT\r", 1));
}

void tst_Line::repeatsAreReported()
{
    TestContext test;
    ScriptedPort port(test);
    port.expect("AT\r", "AT\r\r\nERROR\r\n");
    expectRecovery(port);
    port.expect("AT\r", "AT\r\r\n1\r\n\r\nOK\r\n");
    port.expect("AT\r", "AT\r\r\n2\r\n\r\nOK\r\n");
    link::Line line(test.context, port);
    QByteArray answer;
    QVERIFY(line.exchange(answer, "AT\r", 1));
    QCOMPARE(answer, QByteArray("1"));
    QCOMPARE(line.repeats(), 1);
    QVERIFY(line.exchange(answer, "AT\r", 1));
    QCOMPARE(line.repeats(), 0);
}

void tst_Line::oldBytesAnswerNothing()
{
    TestContext test;
    ScriptedPort port(test);
    port.say("AT\r\r\nold\r\n\r\nOK\r\n");
    test.clock.WaitSeconds(0.1);
    port.expect("AT\r", "AT\r\r\nnew\r\n\r\nOK\r\n");
    link::Line line(test.context, port);
    QByteArray answer;
    QVERIFY(line.exchange(answer, "AT\r", 1));
    QCOMPARE(answer, QByteArray("new"));
}

void tst_Line::oneReadIsCapped()
{
    TestContext test;
    ScriptedPort port(test);
    const QByteArray payload(12000, 'x');
    port.expect("AT\r", "AT\r\r\n" + payload + "\r\n\r\nOK\r\n");
    link::Line line(test.context, port);
    line.Tx("AT\r");
    test.clock.WaitSeconds(0.1);
    QByteArray buffer;
    QVERIFY(line.readWaiting(buffer));
    QCOMPARE(buffer.size(), link::stagingSize);
    QVERIFY(line.readWaiting(buffer));
    QCOMPARE(buffer, "AT\r\r\n" + payload + "\r\n\r\nOK\r\n");
}

void tst_Line::aWaitOverMidnightDoesNotTimeOut()
{
    TestContext test;
    const double untilMidnight = 86400 - test.clock.Timer();
    test.clock.WaitSeconds(untilMidnight - 0.5);
    ScriptedPort port(test);
    port.expect("AT\r", "AT\r\r\nlate\r\n\r\nOK\r\n", 30);
    link::Line line(test.context, port);
    QByteArray answer;
    QVERIFY(line.exchange(answer, "AT\r", 1));
    QCOMPARE(answer, QByteArray("late"));
    QCOMPARE(line.repeats(), 0);

    test.clock.WaitSeconds(86400 - test.clock.Timer() - 0.2);
    const double before = test.clock.elapsed();
    test.clock.WaitSeconds(1);
    QVERIFY(std::abs(test.clock.elapsed() - before - 1) < 0.01); // pauses keep their length
}

namespace {

/// A line that never falls silent.
class BabblingPort : public ScriptedPort
{
public:
    using ScriptedPort::ScriptedPort;
    int InCount() const override { return 7; }
    int Read(char*, int count) override { return count; }
};

} // namespace

void tst_Line::queueThatNeverEmpties()
{
    TestContext test;
    BabblingPort port(test);
    test.dialogs.expect(
        {.text = u"SPortPurgeQueue mehrfach gescheitert. Bitte wenden Sie sich an den Programmautor."_s,
         .icon = toolkit::Icon::Critical});
    test.startLog();
    link::Line(test.context, port).PurgeQueue();
    QCOMPARE(test.logged(), QStringList{u"Warning:: SPortPurgeQueue_Manual - InCount=7"_s});
}

void tst_Line::rawSendGoesOut()
{
    TestContext test;
    ScriptedPort port(test);
    QByteArray all;
    for (int value = 0; value < 256; ++value)
        all.append(static_cast<char>(value));
    all = all.repeated(39).first(link::stagingSize - 16);
    port.expect(all);
    test.startLog();
    link::Line line(test.context, port);
    line.setMode(link::LineMode::Data);
    line.TxDirect(all);
    const QStringList lines = test.logged();
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines[1].startsWith(u"TxDir (ASC): "_s + u" 00 01 02"_s));
    QCOMPARE(lines[2], u"Warning:: OutBufferOverflow TxDirectLen=9984 eComm.OutBufferSize=4096"_s);
}

void tst_Line::failedRawSendEndsTheProgram_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("taken");
    QTest::addColumn<toolkit::Message>("message");
    QTest::newRow("too large to stage")
        << link::stagingSize + 1 << 0
        << toolkit::Message{
               .text = u"Obex Sendefehler. Bitte starten Sie Ihr Telefon und Kalmo neu. Taucht das Problem "
                       u"wieder auf, wenden Sie sich bitte an den Programmautor."_s};
    QTest::newRow("line gone half-way")
        << 10 << 4
        << toolkit::Message{.text = u"Obex Sendefehler (4<>10) Bitte starten Sie Ihr Telefon und Kalmo neu "
                                    u"und stellen Sie sicher, "
                                    u"daß der richtige COM Port gewählt ist.\r\nTaucht das Problem wieder "
                                    u"auf, wenden Sie sich bitte "
                                    u"an den Programmautor."_s,
                            .icon = toolkit::Icon::Exclamation};
}

void tst_Line::failedRawSendEndsTheProgram()
{
    QFETCH(int, size);
    QFETCH(int, taken);
    QFETCH(toolkit::Message, message);
    TestContext test;
    ScriptedPort port(test);
    const QByteArray bytes(size, 'x');
    if (size <= link::stagingSize)
        port.expect(bytes).takingOnly(taken);
    app::put(test.settings, app::keys::LastUnclosedObexDevice, u"SL450"_s);
    test.dialogs.expect(message);
    link::Line line(test.context, port);
    line.setMode(link::LineMode::Data);
    QVERIFY_THROWS_EXCEPTION(ProgramEnded, line.TxDirect(bytes));
    QVERIFY(!port.IsOpen());
    const bool reminderCleared = app::get(test.settings, app::keys::LastUnclosedObexDevice) == app::noValue();
    QCOMPARE(reminderCleared, size <= link::stagingSize);
}

void tst_Line::rawReceive_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<int>("code");
    QTest::newRow("OK") << QByteArray("AT^SQWE=3\r\r\nOK\r\n") << 32;
    QTest::newRow("ERROR counts as answered") << QByteArray("\r\nERROR\r\n") << 32;
    QTest::newRow("silence") << QByteArray() << -1;
    QTest::newRow("no end") << QByteArray("AT^SQWE=3\r\r\nOK") << -1;
}

void tst_Line::rawReceive()
{
    QFETCH(QByteArray, answer);
    QFETCH(int, code);
    inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
        port.expect("AT^SQWE=3\r\n", answer);
        link::Line line(test.context, port);
        line.setMode(link::LineMode::Switching);
        RecordedPanel panel;
        panel.SetText(u"Datenkanal wird geöffnet..."_s);
        QByteArray received = "before";
        const double start = test.clock.elapsed();
        line.TxDirect("AT^SQWE=3\r\n");
        QCOMPARE(static_cast<int>(line.RxDirect(received, 0, &panel)), code);
        QCOMPARE(received, code == 32 ? answer : QByteArray());
        if (code == -1)
            QVERIFY(std::abs(test.clock.elapsed() - start - 5.5) < 0.02);
        QCOMPARE(panel.texts.value(1), u"Datenkanal wird geöffnet... 6 Sekunden max. Restzeit"_s);
    });
}

void tst_Line::portNames()
{
    QCOMPARE(link::Line::ComPortName(0), u"COM0"_s);
    QCOMPARE(link::Line::ComPortName(9), u"COM9"_s);
    QCOMPARE(link::Line::ComPortName(10), u"\\\\.\\COM10"_s);
}

QTEST_GUILESS_MAIN(tst_Line)
#include "tst_Line.moc"
