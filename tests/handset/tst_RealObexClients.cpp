// Clients for any phone against the emulated handset.

#include "support/RunningPrograms.h"
#include "support/TestProgram.h"

#include <QSerialPort>

namespace {

/// Leads the handset into data mode and leaves it there.
void enterDataMode(const QString& path)
{
    QSerialPort port;
    port.setPortName(path);
    QVERIFY(port.open(QIODevice::ReadWrite));
    port.setBaudRate(115200);
    port.write("AT^SQWE=3\r");
    QByteArray answer;
    while (!answer.endsWith("OK\r\n") && port.waitForReadyRead(20000))
        answer += port.readAll();
    QCOMPARE(answer, "\r\nOK\r\n");
}

} // namespace

/// OBEX clients that were written for any phone, and by others: the handset's server has to be right for them
/// too. Known faults of theirs that are not ours: obexftp fails on answers that come in several pieces or
/// have more than 500 bytes, and ends with status 255 after a success; gammu crashes when it has left data
/// mode by "+++".
class RealObexClients : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void obexftp();
    void gammuContacts();

private:
    bool has(const QString& program) const { return !QStandardPaths::findExecutable(program).isEmpty(); }
};

void RealObexClients::obexftp()
{
    if (!has(u"obexftp"_s))
        QSKIP("obexftp is not installed");
    RunningPrograms programs;
    QVERIFY(programs.startHandset({u"--model"_s, u"S68H"_s, u"--profile"_s, u"general-sqwe"_s}));
    programs.makeFile(u"Grüße.txt"_s, "hallo");
    programs.makeFile(u"pic.bmp"_s, QByteArray(3000, 'p'));
    const auto call = [&](const QStringList& arguments) {
        return programs.run(u"obexftp"_s, QStringList{u"-t"_s, programs.line()} + arguments);
    };

    const ProgramRun first =
        call({u"-c"_s, u"Pictures"_s, u"-g"_s, u"Sonnenuntergang.bmp"_s, u"-p"_s, u"pic.bmp"_s, u"-l"_s});
    QCOMPARE(first.status, 255);
    QCOMPARE(programs.contentOf(u"Sonnenuntergang.bmp"_s),
             programs.contentOf(u"handset/files/Pictures/Sonnenuntergang.bmp"_s));
    QVERIFY2(first.out.contains(u"<file name=\"pic.bmp\" size=\"3000\""_s) &&
                 first.out.contains(u"<file name=\"Küste.png\" size=\"501\""_s),
             qPrintable(first.out + first.err));

    const ProgramRun second =
        call({u"-U"_s, u"S45"_s, u"-m"_s, u"Liesmich.txt"_s, u"-m"_s, u"neu.txt"_s, u"-c"_s, u"Pictures"_s,
              u"-k"_s, u"pic.bmp"_s, u"-C"_s, u"Neu"_s, u"-p"_s, u"Grüße.txt"_s});
    QCOMPARE(second.status, 255);
    const QDir files(programs.path(u"handset/files"_s));
    QCOMPARE(programs.contentOf(u"handset/files/Pictures/Neu/Grüße.txt"_s), "hallo");
    QVERIFY(files.exists(u"neu.txt"_s) && !files.exists(u"Liesmich.txt"_s));
    QVERIFY(!files.exists(u"Pictures/pic.bmp"_s));

    QCOMPARE(call({u"-g"_s, u"pic.bmp"_s}).status, 68); // not found
    QCOMPARE(call({u"-U"_s, u"IRMC"_s, u"-g"_s, u"telecom/pb.vcf"_s}).status, 255);
    QCOMPARE(programs.contentOf(u"pb.vcf"_s).count("X-IRMC-LUID"), 25);
    QCOMPARE(programs.stopHandset(), QString());
}

void RealObexClients::gammuContacts()
{
    if (!has(u"gammu"_s) || !has(u"socat"_s))
        QSKIP("gammu or socat is not installed");
    RunningPrograms programs;
    QVERIFY(programs.startHandset(
        {u"--model"_s, u"S68H"_s, u"--profile"_s, u"general-sqwe"_s, u"--seed"_s, u"none"_s}));
    enterDataMode(programs.line());
    programs.makeFile(u"rc"_s, "[gammu]\nconnection = proxyobex\nmodel = obexirmc\ndevice = socat STDIO " +
                                   programs.line().toUtf8() + ",rawer\n");
    programs.makeFile(u"in.vcf"_s,
                      "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Neu;Nina\r\nTEL;HOME:12345\r\nEND:VCARD\r\n");
    const auto call = [&](const QStringList& arguments) {
        return programs.run(u"gammu"_s, QStringList{u"-c"_s, u"rc"_s} + arguments);
    };

    const ProgramRun identity = call({u"identify"_s});
    QVERIFY2(identity.out.contains(u"unknown (S68H)"_s), qPrintable(identity.out + identity.err));
    // It adds the entry, and then misses the clock.
    call({u"addnew"_s, u"in.vcf"_s, u"-yes"_s, u"-memory"_s, u"ME"_s});
    const ProgramRun entry = call({u"getmemory"_s, u"ME"_s, u"1"_s});
    QCOMPARE(entry.status, 0);
    QVERIFY2(entry.out.contains(u"\"Nina\""_s) && entry.out.contains(u"LUID                 : \"0001\""_s),
             qPrintable(entry.out + entry.err));
    QCOMPARE(call({u"deletememory"_s, u"ME"_s, u"1"_s}).status, 0);
    const QByteArray kept = programs.contentOf(u"handset/contacts.json"_s);
    QVERIFY(!kept.isEmpty() && !kept.contains("Nina"));
}

KALMO_TEST(RealObexClients)
#include "tst_RealObexClients.moc"
