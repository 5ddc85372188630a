#include "phonedata/AreaCodes.h"
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
    void reads();
    void sets();
};

void tst_AreaCodes::reads()
{
    const struct
    {
        QByteArray reply; // empty for an error
        QString answer;
        bool isSet;
        bool isUsed;
    } table[] = {
        {"00,49,0,521", u"00,49,0,521"_s, true, true},
        {"^SACO: 00,49,0,", u"00,49,0,"_s, false, true},
        {"^SACO:0,0,0,0", u"0,0,0,0"_s, false, true},
        {",,,", u",,,"_s, true, false},
        {"", {}, true, true},
    };
    for (const auto& row : table) {
        TestContext test;
        ScriptedPort port(test);
        link::Line line(test.context, port);
        port.expect("AT^SACO?\r", "AT^SACO?\r\r\n" + (row.reply.isEmpty() ? "+CME ERROR: 4\r\n"
                                                                          : row.reply + "\r\n\r\nOK\r\n"));
        if (row.reply.isEmpty())
            test.dialogs.expect(
                {.text =
                     u"Die Vorwahleinstellungen konnten nicht ermittelt werden. Bitte starten Sie Telefon "
                     u"und Programm neu.\nBleibt das Problem bestehen, wenden Sie sich bitte an den "
                     u"Programmautor."_s,
                 .icon = Icon::Exclamation});
        QString answer = u"old"_s;
        QCOMPARE(ReadAreaCodes(line, nullptr, answer), row.isSet);
        QCOMPARE(answer, row.answer);
        QCOMPARE(usesAreaCodes(answer), row.isUsed);
        QCOMPARE(parseAreaCodes(answer).has_value(), !row.reply.isEmpty());
    }
}

void tst_AreaCodes::sets()
{
    TestContext test;
    ScriptedPort port(test);
    link::Line line(test.context, port);
    test.dialogs.expect({.text =
                             u"Mindestens eines der Eingabefelder A-D ist leer. Diese Eingabe macht keinen "
                             u"Sinn. Bitte prüfen Sie Ihre Eingabe oder schalten Sie die Verwendung von "
                             u"Vorwalen aus."_s,
                         .icon = Icon::Exclamation});
    QVERIFY(!SetAreaCodes(line, nullptr, {u"00"_s, u" "_s, u"0"_s, u"30"_s}, true)); // sends nothing
    port.expect("AT^SACO=,,,\r", "AT^SACO=,,,\r\r\nOK\r\n");
    QVERIFY(SetAreaCodes(line, nullptr, {}, false));
    port.expect("AT^SACO=00,49,0,30\r", "\r\n+CME ERROR: 4\r\n");
    test.dialogs.expect(
        {.text = u"Die Vorwahleinstellungen konnten nicht gesetzt werden. Bitte prüfen Sie Ihre Eingaben."_s,
         .icon = Icon::Information});
    QVERIFY(!SetAreaCodes(line, nullptr, {u"00"_s, u"49"_s, u"0"_s, u"30"_s}, true));
}

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
