// The fakes themselves: a test that rests on them is worth something only if they do fail.

#include "support/RecordedProgress.h"
#include "support/Rows.h"
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
    void portFailsOnAWrongScript();
    void everyDeliveryIsTried();
    void dialogsFailOnAWrongBox();
    void verdictFailsTheTest();
};

void tst_TestSupport::portFailsOnAWrongScript()
{
    Rows<QByteArrayList, QByteArrayList, QStringList> rows;
    rows.add("as written", {"AT\r", "ATZ\r"}, {"AT\r", "ATZ\r"}, {});
    rows.add("another byte", {"AT\r"}, {"AU\r"},
             {u"request 1: 3 bytes wanted, 3 came, different from byte 1 on"_s});
    rows.add("a byte more", {"AT\r"}, {"AT\r\n"},
             {u"request 1: 3 bytes wanted, 4 came, different from byte 3 on"_s});
    rows.add("one too many", {"A"}, {"A", "B"}, {u"request 2 was not expected: 0000  42"_s});
    rows.add("script left over", {"A", "B"}, {"A"},
             {u"1 expected requests never came, the next one: 0000  42"_s});

    for (const auto& [expected, sent, complaints] : rows) {
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

void tst_TestSupport::dialogsFailOnAWrongBox()
{
    using toolkit::Message;
    const Message wanted{.text = u"Weg?"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No};
    const Rows<Message, bool> rows{
        {"as expected", wanted, true},
        {"text", {.text = u"Weg!"_s, .buttons = Buttons::YesNo, .defaultButton = Answer::No}, false},
        {"buttons", {.text = u"Weg?"_s, .buttons = Buttons::YesNoCancel, .defaultButton = Answer::No}, false},
        {"default button", {.text = u"Weg?"_s, .buttons = Buttons::YesNo}, false},
    };
    for (const auto& [shown, fits] : rows) {
        TestContext test;
        test.dialogs.expect(wanted, Answer::Yes);
        QCOMPARE(test.dialogs.Show(shown), Answer::Yes);
        QCOMPARE(test.verdict.take().isEmpty(), fits);
    }
    TestContext test;
    test.dialogs.expectStart(u"We"_s, Buttons::YesNo, Answer::No);
    test.dialogs.expectStart(u"eg"_s, Buttons::YesNo, Answer::No);
    test.dialogs.expectStart(u"We"_s);
    for (const bool fits : {true, false, false}) {
        test.dialogs.Show(wanted);
        QCOMPARE(test.verdict.take().isEmpty(), fits);
    }
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
