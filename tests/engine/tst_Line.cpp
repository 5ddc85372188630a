// The serial line: AT exchanges, raw exchanges and their timeouts.

#include "support/RecordedProgress.h"
#include "support/ScriptedLine.h"
#include "support/TestProgram.h"

namespace {

const QByteArray atz = "ATZ\r";

} // namespace

class tst_Line : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAreCutOut()
    {
        enum Mode { Plain, LineFeed, KeepTail, Fails };
        const Rows<QByteArray, QByteArray, QByteArray, Mode> rows{
            {"payload", "AT+CGMR\r", "AT+CGMR\r\r\n12\r\n\r\nOK\r\n", "12", Plain},
            {"tail kept", "AT^WSRE\r", "AT^WSRE\r\r\n^WSRE: 1,A\r\n\r\nOK\r\n", "^WSRE: 1,A\r\n", KeepTail},
            {"several lines", "AT^WFFO\r", "AT^WFFO\r\r\n^WFFO: a\r\n^WFFO: b\r\n\r\nOK\r\n",
             "^WFFO: a\r\n^WFFO: b", Plain},
            {"the echoed line feed goes", "AT+CGMM\r", "AT+CGMM\r\n\r\nKilby\r\n\r\nOK\r\n", "Kilby",
             LineFeed},
            {"OK within the answer", "AT+N\r", "AT+N\r\r\nOK OKTAVIA\r\n\r\nOK\r\n", "OK OKTAVIA", Plain},
            {"ends in RED", "AT+D\r", "AT+D\r\r\nabcRED\r\n", {}, Plain},
            {"no echo: payload is lost to it", "AT+CGMM\r", "\r\nWOODSTOCK\r\n\r\nOK\r\n", "K", Plain},
            {"extended error: answer untouched", "AT+X\r", "AT+X\r\r\n+CME ERROR: 3\r\n", "before", Fails},
        };
        rows.each([&](const auto& command, const auto& answer, const auto& payload, const auto& mode) {
            inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
                test.sy.blnTxLfTerminator = mode == LineFeed;
                port.expect(mode == LineFeed && !command.endsWith('\n') ? command + '\n' : command, answer);
                link::Line line(test.context, port);
                QByteArray received = "before";
                line.Tx(command);
                QCOMPARE(line.Rx(received, command, 1, mode == KeepTail), mode != Fails);
                QCOMPARE(received, payload);
            });
        });
    }

    void refusalsAreRepeated()
    {
        const Rows<QByteArray> rows{
            {"ERROR", "AT+X\r\r\nERROR\r\n"},
            {"a word that ends in ORD", "AT+X\r\r\nRECORD\r\n"},
            {"silence", {}}, // three seconds of waiting and two recoveries of 0.8 seconds
        };
        rows.each([&](const auto& refusal) {
            inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
                for (int attempt = 0; attempt < 3; ++attempt) {
                    if (attempt > 0)
                        port.expect(atz).expect(atz);
                    port.expect("AT+X\r", refusal);
                }
                link::Line line(test.context, port);
                QByteArray answer = "before";
                QVERIFY(!line.exchange(answer, "AT+X\r", 1));
                QCOMPARE(answer, QByteArray());
                QVERIFY2(refusal.isEmpty() == (std::abs(test.clock.elapsed() - 4.6) < 0.02),
                         qPrintable(QString::number(test.clock.elapsed())));
            });
        });
    }

    void aWaitOverMidnightDoesNotTimeOut()
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

        test.clock.WaitSeconds(86400 - test.clock.Timer() - 0.2);
        const double before = test.clock.elapsed();
        test.clock.WaitSeconds(1);
        QVERIFY(std::abs(test.clock.elapsed() - before - 1) < 0.01); // pauses keep their length
    }

    void rawBytesGoOutAndIn()
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

        port.say(QByteArray(10001, 'x'));
        test.clock.DoEvents(1);
        QByteArray received;
        for (const int size : {10000, 10001}) { // the rest is left to the next read
            QVERIFY(line.readWaiting(received));
            QCOMPARE(received.size(), size);
        }
    }

    void rawReceive()
    {
        const Rows<QByteArray, int> rows{
            {"OK", "AT^SQWE=3\r\r\nOK\r\n", 32},
            {"silence", {}, -1},
        };
        rows.each([&](const auto& answer, const auto& code) {
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
        });
    }

    /// While the phone takes frames, an AT command would be a frame of many kilobytes.
    void commandsNeedTextMode()
    {
        for (const link::LineMode mode : {link::LineMode::Switching, link::LineMode::Data}) {
            auto&& [test, port, line] = ScriptedLine();
            test.startLog();
            line.setMode(mode);
            QByteArray answer = "old";
            QVERIFY(!line.exchange(answer, "AT+CSQ\r", 1));
            QCOMPARE(answer, QByteArray());
            QVERIFY(test.logged().contains(u"Warning:: Tx refused, the line carries data"_s));
            QCOMPARE(test.clock.elapsed(), 0.0); // no recovery
            line.ConfigurePort();                // a port that was opened again starts with AT commands
            QCOMPARE(line.mode(), link::LineMode::Text);
            line.TxDirect("AT^SQWE=3\r\n"); // among which raw bytes have no place
            QCOMPARE(line.RxDirect(answer, 1), link::RxDirectTimeout);
        }
    }

    void nestedExchangeStealsNothing()
    {
        auto&& [test, port, line] = ScriptedLine();
        int nested = 0;
        const auto intrude = [&, &theLine = line] {
            ++nested;
            QByteArray stolen = "old";
            QVERIFY(!theLine.exchange(stolen, "AT+CBC\r", 1));
            QCOMPARE(stolen, QByteArray());
            theLine.TxDirect("\x83");
            QCOMPARE(theLine.RxDirect(stolen, 1), link::RxDirectTimeout);
        };
        QByteArray answer;
        port.expect("AT+X\r", "AT+X\r\r\n1\r\n\r\nOK\r\n", 0.5);
        test.clock.after(0.2, intrude);
        QVERIFY(line.exchange(answer, "AT+X\r", 1));
        QCOMPARE(answer, QByteArray("1"));
        // During the recovery of a command that was not answered.
        port.expect("AT+X\r").expect(atz).expect(atz).expect("AT+X\r", "AT+X\r\r\n2\r\n\r\nOK\r\n");
        test.clock.after(1.3, intrude);
        QVERIFY(line.exchange(answer, "AT+X\r", 1));
        QCOMPARE(answer, QByteArray("2"));
        QCOMPARE(nested, 2);
    }
};

KALMO_TEST(tst_Line)
#include "tst_Line.moc"
