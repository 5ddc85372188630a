// Facts that a handset reports by single commands, and settings that it takes by them.

#include "link/mdlStatus.h"
#include "phonedata/AreaCodes.h"
#include "support/ScriptedLine.h"
#include "support/TestProgram.h"

using namespace kalmo::phonedata;

namespace {

void answer(ScriptedPort& port, const QByteArray& command, const QByteArray& payload)
{
    port.expect(command, command + "\r\n" + payload + "\r\n\r\nOK\r\n");
}

} // namespace

class tst_Status : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gauges()
    {
        const Rows<QByteArray, QString, int, QByteArray, int> rows{
            {"two digits", "+CSQ: 20,99", u"-- 73 dBm"_s, 64, "+CBC: 0,85", 85},
            {"most", "+CSQ: 31,0", u"-- 51 dBm"_s, 99, "+CBC: 0,100", 100},
            {"cut short", "+CSQ:", u"-- 113 dBm"_s, 0, "+CBC", 0},
        };
        rows.each([&](const auto& signal, const auto& text, const auto& gauge, const auto& battery,
                      const auto& percent) {
            ScriptedLine scripted;
            answer(scripted.port, "AT+CSQ\r", signal);
            answer(scripted.port, "AT+CBC\r", battery);
            const link::SignalQuality quality = link::GetSignalQuality(scripted.line);
            QCOMPARE(quality.text, text);
            QCOMPARE(quality.gauge, gauge);
            QCOMPARE(link::GetBattery(scripted.line), percent);
        });
    }

    void clock()
    {
        const Rows<QByteArray, QDateTime> rows{
            {"quoted", "+CCLK: \"26/11/21,12:30:05\"", QDateTime(QDate(2026, 11, 21), QTime(12, 30, 5))},
            {"last century", "+CCLK: \"99/01/02,00:00:00\"", QDate(1999, 1, 2).startOfDay()},
            {"runs over", "+CCLK: \"26/12/31,24:00:00\"", QDate(2027, 1, 1).startOfDay()},
            {"no comma", "+CCLK: \"26/11/21\"", QDateTime()},
        };
        rows.each([&](const auto& reply, const auto& time) {
            auto&& [test, port, line] = ScriptedLine();
            answer(port, "AT+CCLK?\r", reply);
            if (!time.isValid())
                test.dialogs.expectStart(u"Uhrzeit des Telefon konnte nicht ermittelt werden."_s);
            QDateTime read;
            QCOMPARE(link::GetPhoneTime(line, read), time.isValid());
            if (time.isValid())
                QCOMPARE(read, time);
        });
        auto&& [test, port, line] = ScriptedLine();
        port.expect("AT+CCLK=26/11/21,12:00:00\r", "AT+CCLK=26/11/21,12:00:00\r\r\nOK\r\n");
        test.dialogs.expectStart(u"Sychronisation erfolgreich."_s);
        QVERIFY(link::SetPhoneTime(line));
    }

    void readsAreaCodes()
    {
        const Rows<QByteArray, QString, bool, bool> rows{
            {"set", "00,49,0,521", u"00,49,0,521"_s, true, true},
            {"not all", "^SACO: 00,49,0,", u"00,49,0,"_s, false, true},
            {"zeros", "^SACO:0,0,0,0", u"0,0,0,0"_s, false, true},
            {"not used", ",,,", u",,,"_s, true, false},
            {"error", "", {}, true, true},
        };
        rows.each([&](const auto& reply, const auto& wanted, const auto& isSet, const auto& isUsed) {
            auto&& [test, port, line] = ScriptedLine();
            port.expect("AT^SACO?\r", "AT^SACO?\r\r\n" +
                                          (reply.isEmpty() ? "+CME ERROR: 4\r\n" : reply + "\r\n\r\nOK\r\n"));
            if (reply.isEmpty())
                test.dialogs.expectStart(u"Die Vorwahleinstellungen konnten nicht ermittelt werden."_s);
            QString answer = u"old"_s;
            QCOMPARE(ReadAreaCodes(line, nullptr, answer), isSet);
            QCOMPARE(answer, wanted);
            QCOMPARE(usesAreaCodes(answer), isUsed);
            QCOMPARE(parseAreaCodes(answer).has_value(), !reply.isEmpty());
        });
        QVERIFY(hasBlankCode({u"00"_s, u" "_s, u"0"_s, u"30"_s}));
        QVERIFY(!hasBlankCode({u"00"_s, u"49"_s, u"0"_s, u"30"_s}));
    }
};

KALMO_TEST(tst_Status)
#include "tst_Status.moc"
