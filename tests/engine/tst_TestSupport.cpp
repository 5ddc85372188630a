// The fakes themselves: a test that rests on them is worth something only if they do fail.

#include "support/ScriptedPort.h"
#include "support/TestProgram.h"

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
    const Rows<QByteArrayList, QByteArrayList, QStringList> rows{
        {"as written", {"A", "B"}, {"A", "B"}, {}},
        {"another byte", {"A"}, {"B"}, {u"request 1:\n  came   42\n  wanted 41"_s}},
        {"a byte more", {"A"}, {"A\n"}, {u"request 1:\n  came   41 0a\n  wanted 41"_s}},
        {"one too many", {"A"}, {"A", "B"}, {u"request 2:\n  came   42\n  wanted nothing"_s}},
        {"script left over", {"A", "B"}, {"A"}, {u"1 expected requests never came, the next one: 42"_s}},
    };
    rows.each([&](const auto& expected, const auto& sent, const auto& complaints) {
        TestContext test;
        ScriptedPort port(test);
        for (const QByteArray& request : expected)
            port.expect(request);
        for (const QByteArray& request : sent)
            port.Write(request.constData(), static_cast<int>(request.size()));
        port.finish();
        QCOMPARE(test.verdict.take(), complaints);
    });
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
    rows.each([&](const auto& shown, const auto& fits) {
        TestContext test;
        test.dialogs.expect(wanted, Answer::Yes);
        QCOMPARE(test.dialogs.Show(shown), Answer::Yes);
        QCOMPARE(test.verdict.take().isEmpty(), fits);
        test.dialogs.expectStart(u"Weg?"_s, Buttons::YesNo, Answer::No); // with any default
        test.dialogs.Show(shown);
        QCOMPARE(test.verdict.take().isEmpty(), shown.text == wanted.text && shown.buttons == wanted.buttons);
    });
}

void tst_TestSupport::verdictFailsTheTest()
{
    QEXPECT_FAIL("", "this failure is the one that is tested", Continue);
    {
        Verdict verdict;
        verdict.complain(u"something went wrong"_s);
    }
}

KALMO_TEST(tst_TestSupport)
#include "tst_TestSupport.moc"
