#include "handset/program/CommandLine.h"

#include "support/RunningHandset.h"

#include <QElapsedTimer>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QTest>

using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

bool openPort(QSerialPort& port, const QString& path, int baud)
{
    port.setPortName(path);
    return port.open(QIODevice::ReadWrite) && port.setBaudRate(baud);
}

/// What comes back until `end`, or until nothing has come for so long.
QByteArray say(QSerialPort& port, const QByteArray& bytes, const QByteArray& end = "OK\r\n",
               int milliseconds = patience)
{
    port.write(bytes);
    port.flush();
    QByteArray received;
    while (!received.endsWith(end) && port.waitForReadyRead(milliseconds))
        received += port.readAll();
    return received;
}

const std::pair<int, QString> ended{0, {}};

} // namespace

/// kalmo-handset as a process on a real pseudo terminal, in real time.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arguments_data();
    void arguments();
    void answersOnItsTerminal();
    void outlivesItsClients();
    void keepsPace();
    void dropsTheLine();
    void switchesOffAndOn();
    void tellsViolations();
    void endsWithItsClient();
};

void ProgramTest::arguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("out"); // how it begins
    QTest::addColumn<QString>("err");

    const auto row = [](const char* name, const QStringList& arguments, int status, const QString& out,
                        const QString& err) { QTest::newRow(name) << arguments << status << out << err; };
    row("version", {u"--version"_s}, 0, u"kalmo-handset 1.9.8\n"_s, {});
    row("help", {u"--help"_s}, 0, u"usage: kalmo-handset [OPTION]...\n"_s, {});
    row("models", {u"--list-models"_s}, 0, u"family  AT+CGMM    name\n     1  WOODSTOCK  WOODSTOCK\n"_s, {});
    row("faults", {u"--list-faults"_s}, 0, u"  silent-after=N "_s, {});
    row("unknown option", {u"--colour"_s}, 2, {},
        u"kalmo-handset: Unknown argument \"--colour\"; --help lists what there is.\n"_s);
    row("no value", {u"--model"_s}, 2, {}, u"kalmo-handset: --model takes NAME.\n"_s);
    row("value too many", {u"--until-closed=1"_s}, 2, {},
        u"kalmo-handset: --until-closed takes no value.\n"_s);
    row("no number", {u"--entries=many"_s}, 2, {},
        u"kalmo-handset: --entries: \"many\" is no number from 0 to 99999.\n"_s);
    row("no rate", {u"--baud=12345"_s}, 2, {},
        u"kalmo-handset: --baud: A terminal can't have the rate \"12345\".\n"_s);
    row("family without a model", {u"--family=5"_s}, 2, {},
        u"kalmo-handset: --family and --wppn go with --cgmm.\n"_s);
    row("no choice", {u"--line-end"_s, u"lf"_s}, 2, {},
        u"kalmo-handset: --line-end: \"lf\" is none of cr, crlf.\n"_s);
    row("no fault", {u"--fault"_s, u"fire"_s}, 2, {},
        u"kalmo-handset: --fault: There is no fault \"fire\".\n"_s);
    row("no model", {u"--model=XYZ"_s}, 2, {}, u"kalmo-handset: There is no model \"XYZ\".\n"_s);
    row("no seed", {u"--seed=/none.json"_s}, 2, {},
        u"kalmo-handset: /none.json: No such file or directory\n"_s);
    row("link in the way", {u"--link=/"_s}, 1, {}, u"kalmo-handset: / exists and is no symbolic link.\n"_s);
}

void ProgramTest::arguments()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, out);
    QProcess process;
    process.start(handsetProgram(), arguments);
    QVERIFY(process.waitForFinished(patience));
    QTEST(process.exitCode(), "status");
    QTEST(QString::fromUtf8(process.readAllStandardError()), "err");
    QCOMPARE(QString::fromUtf8(process.readAllStandardOutput()).left(out.size()), out);
}

void ProgramTest::answersOnItsTerminal()
{
    RunningHandset handset({u"--model"_s, u"SL450HX"_s});
    QCOMPARE(QFile::symLinkTarget(handset.link), handset.path);
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 115200));
    QCOMPARE(say(port, "AT^WPPN\r\n"), "AT^WPPN\r\n\r\n^WPPN: 7,SL450HX\r\n\r\nOK\r\n");
    port.setBaudRate(19200);
    QCOMPARE(say(port, "ATZ\r\n", "OK\r\n", 300), "");
    port.close();
    QCOMPARE(handset.end(), ended);
    QVERIFY(!QFileInfo(handset.link).isSymLink());
}

void ProgramTest::outlivesItsClients()
{
    RunningHandset handset({});
    for (int client = 0; client < 3; ++client) {
        QSerialPort port;
        QVERIFY(openPort(port, handset.link, 19200));
        QCOMPARE(say(port, "ATE0\r"), "ATE0\r\r\nOK\r\n"); // the echo is on again for each
        port.write("AT+CGMM\r");
        port.waitForBytesWritten(patience);
    }
    const int before = handset.processorTime();
    QTest::qWait(500);
    QVERIFY2(handset.processorTime() - before <= 5, "burns processor time without a client");
    QCOMPARE(handset.end(), ended);
}

void ProgramTest::keepsPace()
{
    QTemporaryDir folder;
    QFile seed(folder.filePath(u"seed.json"_s));
    QVERIFY(seed.open(QIODevice::WriteOnly));
    QByteArrayList melodies(300, R"({"name": "Menuett in G", "kind": "MID", "size": 1000, "id": 11})");
    seed.write("{\"settings\": {\"melodies\": [" + melodies.join(',') + "]}}");
    seed.close();
    RunningHandset handset({u"--baud"_s, u"115200"_s, u"--seed"_s, seed.fileName()});
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 115200));
    QCOMPARE(say(port, "AT^WFFO=\"3\"\r", "\r"), "AT^WFFO=\"3\"\r");
    QElapsedTimer time;
    time.start();
    const qsizetype bytes = say(port, {}).size();
    // The command itself takes 0.2 s and 0.002 s for each melody.
    const double seconds = static_cast<double>(time.elapsed()) / 1000 - 0.8;
    const double onTheLine = static_cast<double>(bytes) / 11520;
    QVERIFY2(seconds > onTheLine * 0.98 && seconds < onTheLine * 1.3,
             qPrintable(u"%1 bytes in %2 s"_s.arg(bytes).arg(seconds)));
    QCOMPARE(handset.end(), ended);
}

void ProgramTest::dropsTheLine()
{
    RunningHandset handset({u"--fault"_s, u"hangup-at=2"_s});
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 19200));
    QCOMPARE(say(port, "AT\r"), "AT\r\r\nOK\r\n");
    QCOMPARE(say(port, "AT\r", "OK\r\n", 500).left(3), "AT\r");
    QVERIFY(port.error() != QSerialPort::NoError);
    port.close();
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(handset.link), patience);
    QVERIFY(openPort(port, handset.link, 19200));
    QCOMPARE(say(port, "AT\r"), "AT\r\r\nOK\r\n");
    QCOMPARE(handset.end(), ended);
}

/// By SIGUSR1, which is what leads out of a data mode whose client has gone.
void ProgramTest::switchesOffAndOn()
{
    RunningHandset handset({u"--model"_s, u"S68H"_s});
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 115200));
    QCOMPARE(say(port, "AT^SQWE=3\r\n"), "AT^SQWE=3\r\r\nOK\r\n");
    const QByteArray connectIrmc = QByteArray::fromHex("8000131000400646000C49524D432D53594E43");
    QVERIFY(say(port, connectIrmc, "IRMC-SYNC").startsWith('\xA0'));
    handset.powerCycle();
    QTest::qWait(50); // a signal comes when it comes
    QCOMPARE(say(port, "AT\r"), "AT\r\r\nOK\r\n");
    QCOMPARE(handset.end(), ended);
}

void ProgramTest::tellsViolations()
{
    RunningHandset handset({});
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 19200));
    QCOMPARE(say(port, "AT^WSRE\r", "ERROR\r\n"), "AT^WSRE\r\r\nERROR\r\n");
    QCOMPARE(handset.end(), std::make_pair(3, u"violation: AT^WSRE without an open store\n"_s));
}

void ProgramTest::endsWithItsClient()
{
    RunningHandset handset({u"--until-closed"_s});
    QSerialPort port;
    QVERIFY(openPort(port, handset.link, 19200));
    QCOMPARE(say(port, "AT\r"), "AT\r\r\nOK\r\n");
    port.close();
    QCOMPARE(handset.end(false), ended);
}

QTEST_GUILESS_MAIN(ProgramTest)
#include "tst_Program.moc"
