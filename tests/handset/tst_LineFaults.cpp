#include "support/HandsetTalk.h"
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
    void keepsTheLinesPace_data();
    void keepsTheLinesPace();
    void faults_data();
    void faults();
    void dropsTheLine();
    void forgetsWhatWasOnTheWay();
    void faultTexts_data();
    void faultTexts();
    void complaintsReachTheVerdict();
};

void LineFaults::keepsTheLinesPace_data()
{
    QTest::addColumn<int>("baud");

    QTest::newRow("19200") << 19200;
    QTest::newRow("115200") << 115200;
    QTest::newRow("921600") << 921600;
}

/// 10000 bytes take ten bits each, and no byte comes early.
void LineFaults::keepsTheLinesPace()
{
    QFETCH(int, baud);
    VirtualClock clock;
    struct Time : handset::TimeSource
    {
        explicit Time(VirtualClock& virtualClock) : clock(virtualClock) {}
        double now() const override { return clock.elapsed(); }
        QDateTime dateTime() const override { return clock.Now(); }
        void after(double seconds, std::function<void()> action) override { clock.after(seconds, action); }
        VirtualClock& clock;
    } time(clock);
    qsizetype come = 0;
    double end = 0;
    bool early = false;
    handset::Pacer pacer(time, [&](const QByteArray& bytes) {
        come += bytes.size();
        early = early || static_cast<double>(come) * 10 / baud > clock.elapsed() + 1e-5;
    });
    pacer.whenDrained([&] { end = clock.elapsed(); });
    pacer.setRate(baud);
    for (int part = 0; part < 100; ++part)
        pacer.push(QByteArray(100, 'x'));
    clock.WaitSeconds(10);
    QCOMPARE(come, 10000);
    QVERIFY(!early);
    const double wanted = 100000.0 / baud;
    QVERIFY2(std::abs(end - wanted) < wanted / 1000, qPrintable(QString::number(end)));
}

void LineFaults::faults_data()
{
    QTest::addColumn<QStringList>("faults");
    QTest::addColumn<QByteArrayList>("said");
    QTest::addColumn<QByteArrayList>("answers"); // within a second each

    const QByteArray ok = "AT\r\r\nOK\r\n";
    const QByteArrayList thrice = {"AT\r", "AT\r", "AT\r"};
    const auto row = [](const char* name, const QStringList& faults, const QByteArrayList& said,
                        const QByteArrayList& answers) { QTest::newRow(name) << faults << said << answers; };
    row("silence", {u"silent-after=2"_s}, thrice, {ok, ok, {}});
    row("late", {u"late-at=2"_s, u"late-by=1.5"_s}, thrice, {ok, "AT\r", "\r\nOK\r\n" + ok});
    row("noise", {u"noise-at=1"_s}, thrice, {QByteArray("AT\r\x7f\xf8\0\xff\r\nOK\r\n", 13), ok, ok});
    row("lost byte", {u"lose-byte-at=2"_s}, thrice, {ok, "AT\r\r\nO\r\n", ok});
    row("no echo", {u"no-echo"_s}, {"AT\r"}, {"\r\nOK\r\n"});

    const QByteArray open = "AT^WSSL=\"NE\"\r";
    const QByteArray opened = open + "\r\nOK\r\n";
    const QByteArrayList writes = {open, "AT^WSWE=1,A,1,1\r", "AT^WSWE=1,B,1,2\r", "AT^WSWE=1,B,1,2\r"};
    const QByteArray second = "AT^WSWE=1,B,1,2\r\r\n";
    const QByteArray first = "AT^WSWE=1,A,1,1\r\r\nOK\r\n";
    row("write", {u"write-error=2"_s}, writes, {opened, first, second + "ERROR\r\n", second + "ERROR\r\n"});
    row("write once", {u"write-error-once=2"_s}, writes,
        {opened, first, second + "ERROR\r\n", second + "OK\r\n"});
    const QByteArrayList reads = {open, "AT^WSRE\r", "AT^WSRE\r", "AT^WSRE\r"};
    const QByteArray error = "AT^WSRE\r\r\nERROR\r\n";
    const QByteArray entry = "AT^WSRE\r\r\n^WSRE: 7,Nordruf,5,01031\r\n\r\nOK\r\n";
    row("read", {u"read-error=1"_s}, reads, {opened, error, error, error});
    row("read once", {u"read-error-once=1"_s}, reads,
        {opened, error, entry,
         "AT^WSRE\r\r\n^WSRE: 7,S\xfc"
         "d-Tel,5,01052\r\n\r\nOK\r\n"});
}

void LineFaults::faults()
{
    QFETCH(QStringList, faults);
    QFETCH(QByteArrayList, said);
    handset::Options options;
    for (const QString& fault : faults)
        QCOMPARE(handset::setFault(options.faults, fault), std::nullopt);
    HandsetTalk talk(options);
    QByteArrayList answers;
    for (const QByteArray& bytes : said)
        answers.append(talk.say(bytes));
    QTEST(answers, "answers");
    QCOMPARE(talk.violations(), QStringList());
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

void LineFaults::forgetsWhatWasOnTheWay()
{
    HandsetTalk talk({});
    talk.port.WriteText("AT+CGMM\r");
    talk.clock.WaitSeconds(0.02);
    talk.port.Close();
    talk.port.Open({});
    QCOMPARE(talk.say("AT\r"), "AT\r\r\nOK\r\n");
}

void LineFaults::faultTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("problem");

    QTest::newRow("good") << u"late-by=0.5"_s << QString();
    QTest::newRow("unknown") << u"fire=1"_s << u"There is no fault \"fire\"."_s;
    QTest::newRow("no number") << u"late-at=x"_s
                               << u"The fault \"late-at=x\" has to be given as late-at=N."_s;
    QTest::newRow("never") << u"late-at=0"_s << u"The fault \"late-at=0\" has to be given as late-at=N."_s;
    QTest::newRow("switch") << u"no-echo=1"_s << u"The fault \"no-echo=1\" has to be given as no-echo."_s;
}

void LineFaults::faultTexts()
{
    QFETCH(QString, text);
    handset::Faults faults;
    QTEST(handset::setFault(faults, text).value_or(QString()), "problem");
}

void LineFaults::complaintsReachTheVerdict()
{
    Verdict verdict;
    VirtualClock clock;
    {
        HandsetPort port(clock, verdict);
        port.WriteText("AT^WSRE\r");
        clock.WaitSeconds(1);
    }
    QCOMPARE(verdict.take(), {u"The handset says: AT^WSRE without an open store"_s});
}

QTEST_GUILESS_MAIN(LineFaults)
#include "tst_LineFaults.moc"
