// The fakes themselves: a test that rests on them is worth something only if they do fail.

#include "support/RecordedProgress.h"
#include "support/ScriptedPort.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace kalmo;
using namespace kalmo::tests;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;

class tst_TestSupport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void portFailsOnAWrongScript_data();
    void portFailsOnAWrongScript();
    void portAnswersWhenItIsTime();
    void everyDeliveryIsTried();
    void dialogsFailOnAWrongBox_data();
    void dialogsFailOnAWrongBox();
    void unexpectedBoxIsAnsweredHarmlessly();
    void verdictFailsTheTest();
};

void tst_TestSupport::portFailsOnAWrongScript_data()
{
    QTest::addColumn<QByteArrayList>("expected");
    QTest::addColumn<QByteArrayList>("sent");
    QTest::addColumn<QStringList>("complaints");
    using Bytes = QByteArrayList;

    QTest::newRow("as written") << Bytes{"AT\r", "ATZ\r"} << Bytes{"AT\r", "ATZ\r"} << QStringList{};
    QTest::newRow("another byte") << Bytes{"AT\r"} << Bytes{"AU\r"}
                                  << QStringList{
                                         u"request 1: 3 bytes wanted, 3 came, different from byte 1 on"_s};
    QTest::newRow("a byte more") << Bytes{"AT\r"} << Bytes{"AT\r\n"}
                                 << QStringList{
                                        u"request 1: 3 bytes wanted, 4 came, different from byte 3 on"_s};
    QTest::newRow("the start only") << Bytes{"AT\r"} << Bytes{"AT"}
                                    << QStringList{
                                           u"request 1: 3 bytes wanted, 2 came, different from byte 2 on"_s};
    QTest::newRow("wrong order, told once")
        << Bytes{"A", "B"} << Bytes{"B", "A"}
        << QStringList{u"request 1: 1 bytes wanted, 1 came, different from byte 0 on"_s};
    QTest::newRow("one too many") << Bytes{"A"} << Bytes{"A", "B"}
                                  << QStringList{u"request 2 was not expected: 0000  42"_s};
    QTest::newRow("script left over")
        << Bytes{"A", "B"} << Bytes{"A"}
        << QStringList{u"1 expected requests never came, the next one: 0000  42"_s};
}

void tst_TestSupport::portFailsOnAWrongScript()
{
    QFETCH(QByteArrayList, expected);
    QFETCH(QByteArrayList, sent);
    QFETCH(QStringList, complaints);
    TestContext test;
    ScriptedPort port(test);
    for (const QByteArray& request : expected)
        port.expect(request);
    for (const QByteArray& request : sent)
        port.Write(request.constData(), static_cast<int>(request.size()));
    port.finish();
    QStringList came;
    for (const QString& complaint : test.verdict.take())
        came.append(complaint.section(u'\n', 0, 0).section(u"   "_s, 0, 0));
    QCOMPARE(came, complaints);
}

void tst_TestSupport::portAnswersWhenItIsTime()
{
    TestContext test;
    ScriptedPort port(test);
    bool asked = false;
    port.expect("AT\r", "OK", 0.3).then([&] { asked = true; });
    port.expect("AT+\r").takingOnly(2);
    QCOMPARE(port.Write("AT\r", 3), 3);
    QVERIFY(asked);
    test.clock.WaitSeconds(0.29);
    QCOMPARE(port.InCount(), 0);
    test.clock.WaitSeconds(0.02);
    QCOMPARE(port.ReadText(), "OK"_ba);
    QCOMPARE(port.Write("AT+\r", 4), 2);
}

void tst_TestSupport::everyDeliveryIsTried()
{
    QStringList deliveries;
    inEveryDelivery([&](TestContext& test, ScriptedPort& port) {
        port.expect("A", "1234");
        port.Write("A", 1);
        QStringList parts;
        for (int round = 0; round < 200; ++round) {
            test.clock.DoEvents();
            if (port.InCount() > 0)
                parts.append(QString::fromLatin1(port.ReadText()));
        }
        deliveries.append(parts.join(u'|'));
    });
    QCOMPARE(deliveries, (QStringList{u"1234"_s, u"1|2|3|4"_s, u"1|234"_s, u"12|34"_s, u"123|4"_s}));
}

void tst_TestSupport::dialogsFailOnAWrongBox_data()
{
    QTest::addColumn<toolkit::Message>("shown");
    QTest::addColumn<QString>("complaint");
    const auto row = [](const char* name, const toolkit::Message& shown, const QString& complaint) {
        QTest::newRow(name) << shown << complaint;
    };
    row("as expected",
        {.text = u"Weg?"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No, .english = u"?"_s}, {});
    row("text", {.text = u"Weg!"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No},
        u"expected: box"_s);
    row("title", {.text = u"Weg?"_s, .title = u"x"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No},
        u"expected: box"_s);
    row("buttons", {.text = u"Weg?"_s, .buttons = Buttons::YesNoCancel, .defaultButton = Answer::No},
        u"expected: box"_s);
    row("default", {.text = u"Weg?"_s, .buttons = Buttons::YesNo}, u"expected: box"_s);
    row("icon",
        {.text = u"Weg?"_s, .buttons = Buttons::YesNo, .icon = Icon::Question, .defaultButton = Answer::No},
        u"expected: box"_s);
    row("English",
        {.text = u"Weg?"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No, .english = u"!"_s},
        u"expected in English"_s);
}

void tst_TestSupport::dialogsFailOnAWrongBox()
{
    QFETCH(toolkit::Message, shown);
    QFETCH(QString, complaint);
    TestContext test;
    test.dialogs.expect(
        {.text = u"Weg?"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No, .english = u"?"_s},
        Answer::Yes);
    QCOMPARE(test.dialogs.Show(shown), Answer::Yes);
    const QStringList complaints = test.verdict.take();
    QCOMPARE(complaints.size(), complaint.isEmpty() ? 0 : 1);
    QVERIFY2(complaints.value(0).startsWith(complaint), qPrintable(complaints.value(0)));
}

void tst_TestSupport::unexpectedBoxIsAnsweredHarmlessly()
{
    TestContext test;
    QCOMPARE(test.dialogs.Show({.text = u"Nochmal?"_s, .buttons = Buttons::RetryCancel}), Answer::Cancel);
    QCOMPARE(test.dialogs.Show({.text = u"Weg?"_s, .buttons = Buttons::YesNo}), Answer::No);
    QCOMPARE(test.dialogs.PickFolder(u"Wohin?"_s, {}), QString());
    QCOMPARE(test.verdict.take().size(), 3);

    test.dialogs.expect({.text = u"Nie gezeigt"_s});
    test.dialogs.expect({.text = u"Antwort ohne Knopf"_s}, Answer::Retry);
    test.dialogs.finish();
    QCOMPARE(test.verdict.take().size(), 3); // the answer, and two boxes that never came
}

void tst_TestSupport::verdictFailsTheTest()
{
    QEXPECT_FAIL("", "this failure is the one that is tested", Continue);
    {
        Verdict verdict;
        verdict.complain(u"something went wrong"_s);
    }
}

QTEST_GUILESS_MAIN(tst_TestSupport)
#include "tst_TestSupport.moc"
