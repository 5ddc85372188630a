// The program kalmo-handset on a pseudo terminal.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

#include <QSerialPort>

#include <csignal>

namespace {

constexpr int patience = 20000; // milliseconds, for a machine that is busy

bool openPort(QSerialPort& port, const QString& path, int baud)
{
    port.setPortName(path);
    return port.open(QIODevice::ReadWrite) && port.setBaudRate(baud);
}

/// Returns the bytes that come back until `end`, or until nothing has come for so long.
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

/// Processor time that a program has taken so far, in hundredths of a second.
int processorTime(qint64 id)
{
    QFile file(u"/proc/%1/stat"_s.arg(id));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArrayList fields = file.readAll().split(' ');
    return fields.value(13).toInt() + fields.value(14).toInt();
}

} // namespace

/// kalmo-handset as a process on a real pseudo terminal, in real time.
class ProgramTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arguments()
    {
        Rows<QStringList, int, QString, QString> rows;
        rows.add("version", {u"--version"_s}, 0, u"kalmo-handset 1.9.8\n"_s, {});
        rows.add("unknown option", {u"--colour"_s}, 2, {},
                 u"kalmo-handset: Unknown argument \"--colour\"; --help lists what there is.\n"_s);
        rows.add("no model", {u"--model=XYZ"_s}, 2, {}, u"kalmo-handset: There is no model \"XYZ\".\n"_s);
        rows.add("link in the way", {u"--link=/"_s}, 1, {},
                 u"kalmo-handset: / exists and is no symbolic link.\n"_s);

        rows.each([&](const auto& arguments, const auto& status, const auto& out, const auto& err) {
            const ProgramRun run =
                RunningPrograms().run(u"env"_s, QStringList{u"kalmo-handset"_s} + arguments);
            QCOMPARE(run.status, status);
            QCOMPARE(run.err, err);
            QCOMPARE(run.out.left(out.size()), out);
        });
    }

    void answersOnItsTerminal()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({u"--model"_s, u"SL450HX"_s}));
        QCOMPARE(QFile::symLinkTarget(programs.line()), programs.terminal());
        QSerialPort port;
        QVERIFY(openPort(port, programs.line(), 115200));
        QCOMPARE(say(port, "AT^WPPN\r\n"), "AT^WPPN\r\n\r\n^WPPN: 7,SL450HX\r\n\r\nOK\r\n");
        port.setBaudRate(19200);
        QCOMPARE(say(port, "ATZ\r\n", "OK\r\n", 300), "");
        port.close();
        QCOMPARE(programs.stopHandset(), QString());
        QVERIFY(!QFileInfo(programs.line()).isSymLink());
    }

    void outlivesItsClients()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({}));
        for (int client = 0; client < 3; ++client) {
            QSerialPort port;
            QVERIFY(openPort(port, programs.line(), 19200));
            QCOMPARE(say(port, "ATE0\r"), "ATE0\r\r\nOK\r\n"); // the echo is on again for each
            port.write("AT+CGMM\r");
            port.waitForBytesWritten(patience);
        }
        const int before = processorTime(programs.handsetId());
        QTest::qWait(500);
        QVERIFY2(processorTime(programs.handsetId()) - before <= 5, "burns processor time without a client");
        QCOMPARE(programs.stopHandset(), QString());
    }

    /// By SIGUSR1, which is what leads out of a data mode whose client has gone.
    void switchesOffAndOn()
    {
        RunningPrograms programs;
        QVERIFY(programs.startHandset({u"--model"_s, u"S68H"_s}));
        QSerialPort port;
        QVERIFY(openPort(port, programs.line(), 115200));
        QCOMPARE(say(port, "AT^SQWE=3\r\n"), "AT^SQWE=3\r\r\nOK\r\n");
        const QByteArray connectIrmc = QByteArray::fromHex("8000131000400646000C49524D432D53594E43");
        QVERIFY(say(port, connectIrmc, "IRMC-SYNC").startsWith('\xA0'));
        kill(static_cast<pid_t>(programs.handsetId()), SIGUSR1);
        QTest::qWait(50); // a signal comes when it comes
        QCOMPARE(say(port, "AT\r"), "AT\r\r\nOK\r\n");
        const QString complaint = programs.stopHandset(); // this client waits for nothing
        QVERIFY2(complaint.startsWith(u"status 3: violation: a request 0."_s), qPrintable(complaint));
    }
};

KALMO_TEST(ProgramTest)
#include "tst_Program.moc"
