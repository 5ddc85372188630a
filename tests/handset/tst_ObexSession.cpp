#include "support/ObexTalk.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

const QByteArray ok = obexFrame(0xA0);

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

} // namespace

/// The way into data mode and out of it, and what stands between.
class ObexSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void connects_data();
    void connects();
    void findsTheWayBack_data();
    void findsTheWayBack();
    void staysInDataMode();
};

void ObexSession::connects_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<int>("maxPacket");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");

    QTest::newRow("folders") << u"S68H"_s << 0 << connectFolders
                             << hex("A0001F10000200CB000000014A0013"
                                    "6B01CB31410611D49A770050DA3F471F");
    QTest::newRow("IrMC") << u"SL450HX"_s << 0 << connectIrmc
                          << hex("A0001810001000CB000000014A000C"
                                 "49524D432D53594E43");
    QTest::newRow("told") << u"S68H"_s << 65535 << connectIrmc
                          << hex("A000181000FFFFCB000000014A000C"
                                 "49524D432D53594E43");
    QTest::newRow("unknown target") << u"S68H"_s << 0 << obexFrame(0x80, hex("10004006460004") + 'X')
                                    << obexFrame(0xC3);
}

void ObexSession::connects()
{
    QFETCH(QString, model);
    QFETCH(int, maxPacket);
    QFETCH(QByteArray, request);
    ObexTalk talk({.model = model, .maxPacket = maxPacket});
    QVERIFY(talk.opened);
    QTEST(talk.ask(request), "answer");
}

void ObexSession::findsTheWayBack_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<double>("before");
    QTest::addColumn<double>("behind");
    QTest::addColumn<QByteArray>("toEscape");
    QTest::addColumn<QByteArray>("toCommand");
    QTest::addColumn<QStringList>("violations");

    const QByteArray answer = "AT^SQWE=0\r\r\nOK\r\n";
    const QByteArray newAnswer = "AT^SQWE=0\r\n\r\nOK\r\n";
    QTest::newRow("silent about it") << u"S68H"_s << 1.0 << 1.4 << QByteArray() << answer << QStringList();
    QTest::newRow("says OK") << u"SL450HX"_s << 1.0 << 1.4 << QByteArray("\r\nOK\r\n") << newAnswer
                             << QStringList();
    QTest::newRow("no silence before")
        << u"S68H"_s << 0.5 << 1.4 << QByteArray() << QByteArray() << QStringList{u"no silence before +++"_s};
    QTest::newRow("no silence behind") << u"S68H"_s << 1.0 << 0.7 << QByteArray() << QByteArray()
                                       << QStringList{u"no silence behind +++"_s, u"no silence before +++"_s};
}

void ObexSession::findsTheWayBack()
{
    QFETCH(QString, model);
    QFETCH(double, before);
    QFETCH(double, behind);
    ObexTalk talk({.model = model});
    talk.ask(connectFolders);
    QCOMPARE(talk.ask(obexFrame(0x81)), ok);
    talk.clock.WaitSeconds(before);
    QTEST(talk.say("+++", behind), "toEscape");
    QTEST(talk.say("AT^SQWE=0\r\n"), "toCommand");
    QTEST(talk.violations(), "violations");
}

/// Nobody tells the handset that a client is gone: to the next one it is deaf until that one knows the way.
void ObexSession::staysInDataMode()
{
    ObexTalk talk({.model = u"S68H"_s});
    talk.ask(connectFolders);
    talk.port.Close();
    talk.port.Open({});
    QCOMPARE(talk.say("ATZ\r"), "");
    QVERIFY(talk.port.handset().isInDataMode());
    talk.clock.WaitSeconds(1);
    QCOMPARE(talk.sayAll({"+++", "AT\r"}, 1.4), "AT\r\r\nOK\r\n");

    QCOMPARE(talk.say("AT^SQWE=3\r\n"), "AT^SQWE=3\r\r\nOK\r\n");
    talk.say("ATZ\r");
    talk.port.handset().powerCycle();
    QCOMPARE(talk.say("AT\r"), "AT\r\r\nOK\r\n");
    QCOMPARE(talk.violations(), {u"AT command in data mode"_s});
}

QTEST_GUILESS_MAIN(ObexSession)
#include "tst_ObexSession.moc"
