#include "link/PhoneModels.h"

#include <QtTest>

using namespace kalmo::link;
using namespace Qt::StringLiterals;

class tst_PhoneModels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void secondStage_data();
    void secondStage();
    void modelNames_data();
    void modelNames();
};

void tst_PhoneModels::secondStage_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<int>("phoneType");
    QTest::newRow("plain") << u"^WPPN: 7,SL450HX"_s << 12;
    QTest::newRow("compared as a whole") << u"^WPPN: 7,SL450HX "_s << 0;
    QTest::newRow("case counts") << u"^WPPN: 7,sl450hx"_s << 0;
    QTest::newRow("control character in the name") << u"^WPPN: 8,To\u0007 S600"_s << 5;
    QTest::newRow("semicolon of the table") << u"^WPPN; 16,M3 Ex Plus prof."_s << 11;
    QTest::newRow("colon in its place is unknown") << u"^WPPN: 16,M3 Ex Plus prof."_s << 0;
    QTest::newRow("wrong length of the table") << u"^WPPN: 10,SL5 prof.."_s << 13;
}

void tst_PhoneModels::secondStage()
{
    QFETCH(QString, answer);
    QTEST(lookUpWppn(answer), "phoneType");
}

void tst_PhoneModels::modelNames_data()
{
    QTest::addColumn<QString>("raw");
    QTest::addColumn<QString>("name"); // null where the text does not parse
    QTest::newRow("regular") << u"^WPPN: 5,SL999"_s << u"SL999"_s;
    QTest::newRow("comma in the name") << u"^WPPN: 4,a,bc"_s << u"a,bc"_s;
    QTest::newRow("wrong length") << u"^WPPN: 4,SL999"_s << QString();
    QTest::newRow("length is no number") << u"^WPPN: x,SL999"_s << QString();
    QTest::newRow("no comma") << u"^WPPN: SL999"_s << QString();
    QTest::newRow("too short") << u"^WPPN: 1,"_s << QString();
    QTest::newRow("semicolon") << u"^WPPN; 16,M3 Ex Plus prof."_s << QString();
    QTest::newRow("modem") << u"ACME 56k"_s << QString();
    QTest::newRow("empty") << QString() << QString();
}

void tst_PhoneModels::modelNames()
{
    QFETCH(QString, raw);
    QFETCH(QString, name);
    QString parsed;
    QCOMPARE(ParseWppn(raw, parsed), !name.isNull());
    QCOMPARE(parsed, name);
}

QTEST_GUILESS_MAIN(tst_PhoneModels)
#include "tst_PhoneModels.moc"
