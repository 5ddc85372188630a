#include "phonedata/AreaCodes.h"
#include "support/Rows.h"
#include "support/ScriptedLine.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::phonedata;
using namespace kalmo::tests;

class tst_AreaCodes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads()
    {
        const Rows<QByteArray, QString, bool, bool> rows{
            {"set", "00,49,0,521", u"00,49,0,521"_s, true, true},
            {"not all", "^SACO: 00,49,0,", u"00,49,0,"_s, false, true},
            {"zeros", "^SACO:0,0,0,0", u"0,0,0,0"_s, false, true},
            {"not used", ",,,", u",,,"_s, true, false},
            {"error", "", {}, true, true},
        };
        for (const auto& [reply, wanted, isSet, isUsed] : rows) {
            ScriptedLine scripted;
            auto& [test, port, line] = scripted;
            port.expect("AT^SACO?\r", "AT^SACO?\r\r\n" +
                                          (reply.isEmpty() ? "+CME ERROR: 4\r\n" : reply + "\r\n\r\nOK\r\n"));
            if (reply.isEmpty())
                test.dialogs.expectStart(u"Die Vorwahleinstellungen konnten nicht ermittelt werden."_s);
            QString answer = u"old"_s;
            QCOMPARE(ReadAreaCodes(line, nullptr, answer), isSet);
            QCOMPARE(answer, wanted);
            QCOMPARE(usesAreaCodes(answer), isUsed);
            QCOMPARE(parseAreaCodes(answer).has_value(), !reply.isEmpty());
        }
    }

    void sets()
    {
        ScriptedLine scripted;
        auto& [test, port, line] = scripted;
        test.dialogs.expectStart(u"Mindestens eines der Eingabefelder A-D ist leer."_s);
        QVERIFY(!SetAreaCodes(line, nullptr, {u"00"_s, u" "_s, u"0"_s, u"30"_s}, true)); // sends nothing
        port.expect("AT^SACO=,,,\r", "AT^SACO=,,,\r\r\nOK\r\n");
        QVERIFY(SetAreaCodes(line, nullptr, {}, false));
        port.expect("AT^SACO=00,49,0,30\r", "\r\n+CME ERROR: 4\r\n");
        test.dialogs.expectStart(u"Die Vorwahleinstellungen konnten nicht gesetzt werden."_s);
        QVERIFY(!SetAreaCodes(line, nullptr, {u"00"_s, u"49"_s, u"0"_s, u"30"_s}, true));
    }
};

QTEST_GUILESS_MAIN(tst_AreaCodes)
#include "tst_AreaCodes.moc"
