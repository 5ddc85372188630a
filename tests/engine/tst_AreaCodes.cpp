#include "phonedata/AreaCodes.h"
#include "support/RecordedProgress.h"
#include "support/ScriptedPort.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;
using toolkit::Icon;

class tst_AreaCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void sets_data();
    void sets();
};

void tst_AreaCodes::reads_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("isSet");
    QTest::addColumn<bool>("isUsed");

    QTest::newRow("plain") << QByteArray("00,49,0,521") << u"00,49,0,521"_s << true << true;
    QTest::newRow("prefix") << QByteArray("^SACO: 00,49,0,") << u"00,49,0,"_s << false << true;
    QTest::newRow("nothing set") << QByteArray("^SACO:0,0,0,0") << u"0,0,0,0"_s << false << true;
    QTest::newRow("not in use") << QByteArray(",,,") << u",,,"_s << true << false;
    QTest::newRow("error") << QByteArray() << QString() << true << true;
}

void tst_AreaCodes::reads()
{
    QFETCH(QByteArray, reply);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    RecordedPanel panel;
    const QByteArray command = "AT^SACO?\r";
    if (reply.isEmpty()) {
        port.expect(command, command + "\r\n+CME ERROR: 4\r\n");
        test.dialogs.expect(
            {.text =
                 u"Die Vorwahleinstellungen konnten nicht ermittelt werden. Bitte starten Sie Telefon und "
                 u"Programm neu.\nBleibt das Problem bestehen, wenden Sie sich bitte an den Programmautor."_s,
             .icon = Icon::Exclamation});
    } else {
        port.expect(command, command + "\r\n" + reply + "\r\n\r\nOK\r\n");
    }
    QString answer = u"old"_s;
    const bool isSet = ReadAreaCodes(line, &panel, answer);
    QTEST(isSet, "isSet");
    QTEST(answer, "answer");
    QTEST(usesAreaCodes(answer), "isUsed");
    QCOMPARE(parseAreaCodes(answer).has_value(), !reply.isEmpty());
    QCOMPARE(panel.texts, QStringList({u"Prüfe Vorwahl Einstellungen..."_s, u"Bereit."_s}));
}

void tst_AreaCodes::sets_data()
{
    QTest::addColumn<QStringList>("codes");
    QTest::addColumn<bool>("inUse");
    QTest::addColumn<QByteArray>("command"); // empty: nothing is sent
    QTest::addColumn<bool>("taken");

    QTest::newRow("set") << QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s} << true
                         << QByteArray("AT^SACO=00,49,0,30\r") << true;
    QTest::newRow("off") << QStringList{{}, {}, {}, {}} << false << QByteArray("AT^SACO=,,,\r") << true;
    QTest::newRow("blank") << QStringList{u"00"_s, u" "_s, u"0"_s, u"30"_s} << true << QByteArray() << false;
    QTest::newRow("refused") << QStringList{u"1"_s, u"2 "_s, u"3"_s, u"4"_s} << true
                             << QByteArray("AT^SACO=1,2 ,3,4\r") << false;
}

void tst_AreaCodes::sets()
{
    QFETCH(QStringList, codes);
    QFETCH(bool, inUse);
    QFETCH(QByteArray, command);
    QFETCH(bool, taken);
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    if (command.isEmpty())
        test.dialogs.expect(
            {.text = u"Mindestens eines der Eingabefelder A-D ist leer. Diese Eingabe macht keinen "
                     u"Sinn. Bitte prüfen Sie Ihre Eingabe oder schalten Sie die Verwendung von "
                     u"Vorwalen aus."_s,
             .icon = Icon::Exclamation});
    else
        port.expect(command, command + (taken ? "\r\nOK\r\n" : "\r\n+CME ERROR: 4\r\n"));
    if (!command.isEmpty() && !taken)
        test.dialogs.expect(
            {.text = u"Die Vorwahleinstellungen konnten nicht gesetzt werden. Bitte prüfen Sie Ihre "
                     u"Eingaben."_s,
             .icon = Icon::Information});
    QCOMPARE(SetAreaCodes(line, nullptr, {codes[0], codes[1], codes[2], codes[3]}, inUse), taken);
    QCOMPARE(isAreaCode(codes[1]), !codes[1].contains(u' '));
}

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
