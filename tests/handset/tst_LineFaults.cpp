#include "support/HandsetTalk.h"
#include "support/Rows.h"
#include "support/Verdict.h"

#include <QTest>

using namespace kalmo;
using namespace kalmo::tests;
using namespace Qt::StringLiterals;

/// The line's pace, and what can be made to go wrong in command mode.
class LineFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void faults();
    void dropsTheLine();
};

void LineFaults::faults()
{
    const QByteArray ok = "AT\r\r\nOK\r\n";
    const QByteArrayList thrice = {"AT\r", "AT\r", "AT\r"};
    const QByteArray open = "AT^WSSL=\"NE\"\r";
    const QByteArray opened = open + "\r\nOK\r\n";
    const QByteArrayList writes = {open, "AT^WSWE=1,A,1,1\r", "AT^WSWE=1,B,1,2\r", "AT^WSWE=1,B,1,2\r"};
    const QByteArray second = "AT^WSWE=1,B,1,2\r\r\n";
    const QByteArray first = "AT^WSWE=1,A,1,1\r\r\nOK\r\n";
    const QByteArrayList reads = {open, "AT^WSRE\r", "AT^WSRE\r", "AT^WSRE\r"};
    const QByteArray error = "AT^WSRE\r\r\nERROR\r\n";
    const QByteArray entry = "AT^WSRE\r\r\n^WSRE: 7,Nordruf,5,01031\r\n\r\nOK\r\n";
    Rows<QStringList, QByteArrayList, QByteArrayList> rows;
    rows.add("silence", {u"silent-after=2"_s}, thrice, {ok, ok, {}});
    rows.add("late", {u"late-at=2"_s, u"late-by=1.5"_s}, thrice, {ok, "AT\r", "\r\nOK\r\n" + ok});
    rows.add("noise", {u"noise-at=1"_s}, thrice, {QByteArray("AT\r\x7f\xf8\0\xff\r\nOK\r\n", 13), ok, ok});
    rows.add("lost byte", {u"lose-byte-at=2"_s}, thrice, {ok, "AT\r\r\nO\r\n", ok});
    rows.add("write once", {u"write-error-once=2"_s}, writes,
             {opened, first, second + "ERROR\r\n", second + "OK\r\n"});
    rows.add("read once", {u"read-error-once=1"_s}, reads,
             {opened, error, entry,
              "AT^WSRE\r\r\n^WSRE: 7,S\xfc"
              "d-Tel,5,01052\r\n\r\nOK\r\n"});

    for (const auto& [faults, said, wantedAnswers] : rows) {
        handset::Options options;
        for (const QString& fault : faults)
            QCOMPARE(handset::setFault(options.faults, fault), std::nullopt);
        HandsetTalk talk(options);
        QByteArrayList answers;
        for (const QByteArray& bytes : said)
            answers.append(talk.say(bytes));
        QCOMPARE(answers, wantedAnswers);
        QCOMPARE(talk.violations(), QStringList());
    }
}

void LineFaults::dropsTheLine()
{
    HandsetTalk talk({});
    talk.port.handset().setFaults({.hangUpAt = 2});
    QCOMPARE(talk.say("AT\r"), "AT\r\r\nOK\r\n");
    talk.port.WriteText("AT\r");
    talk.clock.WaitSeconds(0.1);
    QVERIFY(!talk.port.IsOpen());
    QCOMPARE(talk.port.Write("AT\r", 3), 0);
    QVERIFY(!talk.port.Open({}));
    QCOMPARE(talk.port.openErrorEnglish(), u"No port."_s);
    talk.clock.WaitSeconds(1);
    QVERIFY(talk.port.Open({}));
    QCOMPARE(talk.say("AT\r"), "AT\r\r\nOK\r\n");
}

QTEST_GUILESS_MAIN(LineFaults)
#include "tst_LineFaults.moc"
