#include "link/mdlStatus.h"
#include "support/ScriptedPort.h"

#include <QtTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

class tst_Status : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void signal_data();
    void signal();
    void battery_data();
    void battery();
    void clock_data();
    void clock();
    void settingTheClock();
    void modelText_data();
    void modelText();
    void silenceIsTold();
};

namespace {

void answer(ScriptedPort& port, const QByteArray& command, const QByteArray& payload)
{
    port.expect(command, command + "\r\n" + payload + "\r\n\r\nOK\r\n");
}

} // namespace

void tst_Status::signal_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("gauge");
    QTest::newRow("two digits") << QByteArray("+CSQ: 20,99") << u"-- 73 dBm"_s << 64;
    QTest::newRow("one digit") << QByteArray("+CSQ: 5,99") << u"-- 103 dBm"_s << 16;
    QTest::newRow("top") << QByteArray("+CSQ: 31,0") << u"-- 51 dBm"_s << 99;
    QTest::newRow("unknown is shown as it is") << QByteArray("+CSQ: 99,99") << u"-- -85 dBm"_s << 317;
    QTest::newRow("cut short") << QByteArray("+CSQ:") << u"-- 113 dBm"_s << 0;
}

void tst_Status::signal()
{
    QFETCH(QByteArray, reply);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    answer(port, "AT+CSQ\r", reply);
    const link::SignalQuality quality = link::GetSignalQuality(line);
    QTEST(quality.text, "text");
    QTEST(quality.gauge, "gauge");
}

void tst_Status::battery_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("percent");
    QTest::newRow("two digits") << QByteArray("+CBC: 0,85") << 85;
    QTest::newRow("full") << QByteArray("+CBC: 0,100") << 100;
    QTest::newRow("one digit") << QByteArray("+CBC: 0,7") << 7;
    QTest::newRow("cut short") << QByteArray("+CBC") << 0;
}

void tst_Status::battery()
{
    QFETCH(QByteArray, reply);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    answer(port, "AT+CBC\r", reply);
    QTEST(link::GetBattery(line), "percent");
}

void tst_Status::clock_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QDateTime>("time"); // invalid where the answer makes none
    const auto moment = [](int y, int m, int d, int h, int n, int s) {
        return QDateTime(QDate(y, m, d), QTime(h, n, s));
    };
    QTest::newRow("quoted") << QByteArray("+CCLK: \"26/11/21,12:30:05\"") << moment(2026, 11, 21, 12, 30, 5);
    QTest::newRow("last century") << QByteArray("+CCLK: \"99/01/02,00:00:00\"")
                                  << moment(1999, 1, 2, 0, 0, 0);
    QTest::newRow("runs over") << QByteArray("+CCLK: \"26/12/31,24:00:00\"") << moment(2027, 1, 1, 0, 0, 0);
    QTest::newRow("no comma") << QByteArray("+CCLK: \"26/11/21\"") << QDateTime();
    QTest::newRow("parts missing") << QByteArray("+CCLK: \"26/11,12\"") << QDateTime();
}

void tst_Status::clock()
{
    QFETCH(QByteArray, reply);
    QFETCH(QDateTime, time);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    answer(port, "AT+CCLK?\r", reply);
    if (!time.isValid())
        test.dialogs.expect({.text = u"Uhrzeit des Telefon konnte nicht ermittelt werden."_s,
                             .icon = toolkit::Icon::Information});
    QDateTime read;
    QCOMPARE(link::GetPhoneTime(line, read), time.isValid());
    if (time.isValid())
        QCOMPARE(read, time);
}

void tst_Status::settingTheClock()
{
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    port.expect("AT+CCLK=26/11/21,12:00:00\r", "AT+CCLK=26/11/21,12:00:00\r\r\nOK\r\n");
    test.dialogs.expect(
        {.text = u"Sychronisation erfolgreich. Übernahme kann bis zu 1 Minute dauern.\n\nDas Gigaset "
                 u"unterstützt keine Sekundenanzeige, daher endet die angezeigte Zeit immer auf \"00\""_s,
         .title = u"Kalmo  -  Zeitsychronisation"_s,
         .icon = toolkit::Icon::Information});
    QVERIFY(link::SetPhoneTime(line));
}

void tst_Status::modelText_data()
{
    QTest::addColumn<QByteArray>("model");
    QTest::addColumn<bool>("asksName");
    QTest::addColumn<QString>("text");
    QTest::newRow("classic") << QByteArray("PICASSO") << false << u"PICASSO"_s;
    QTest::newRow("with its name") << QByteArray("GAM2") << true << u"GAM2 [^WPPN: 4,SL55]"_s;
    QTest::newRow("newer ones go without") << QByteArray("Kilby") << false << u"Kilby"_s;
}

void tst_Status::modelText()
{
    QFETCH(QByteArray, model);
    QFETCH(bool, asksName);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    answer(port, "AT+CGMM\r", model);
    if (asksName)
        answer(port, "AT^WPPN\r", "^WPPN: 4,SL55");
    QString text;
    QVERIFY(link::GetPhoneModelText(line, text));
    QTEST(text, "text");
}

void tst_Status::silenceIsTold()
{
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (attempt > 0)
            port.expect("ATZ\r").expect("ATZ\r");
        port.expect("AT+CGSN\r");
    }
    test.dialogs.expect({.text = u"Es ist ein Übertragungsfehler aufgetreten. ... Fehlercode: AT+CGSN"_s,
                         .icon = toolkit::Icon::Exclamation});
    QString text = u"before"_s;
    QVERIFY(!link::GetSerialNumber(line, text));
    QCOMPARE(text, u"before"_s);
}

QTEST_GUILESS_MAIN(tst_Status)
#include "tst_Status.moc"
