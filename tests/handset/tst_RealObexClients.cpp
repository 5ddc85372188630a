#include "support/RunningHandset.h"

#include <QSerialPort>
#include <QStandardPaths>
#include <QTest>

using namespace kalmo::tests;
using namespace Qt::StringLiterals;

namespace {

constexpr int clientPatience = 100000; // milliseconds

/// What became of a client's run.
struct Run
{
    int status = -1;
    QString output;
};

Run run(const QString& folder, const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.waitForFinished(clientPatience);
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("not there");
}

/// Gammu with a configuration of its own.
class Gammu
{
public:
    Gammu(const RunningHandset& handset, const QByteArray& connection) : m_folder(handset.folder())
    {
        write(handset.filePath(u"rc"_s),
              "[gammu]\n" + connection + "device = socat STDIO " + handset.link.toUtf8() + ",rawer\n");
    }

    Run run(const QStringList& arguments) const
    {
        return ::run(m_folder, u"gammu"_s, QStringList{u"-c"_s, u"rc"_s} + arguments);
    }

private:
    QString m_folder;
};

/// Leads the handset into data mode and leaves it there.
void enterDataMode(const QString& path)
{
    QSerialPort port;
    port.setPortName(path);
    QVERIFY(port.open(QIODevice::ReadWrite));
    port.setBaudRate(115200);
    port.write("AT^SQWE=3\r");
    QByteArray answer;
    while (!answer.endsWith("OK\r\n") && port.waitForReadyRead(patience))
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
    RunningHandset handset({u"--model"_s, u"S68H"_s, u"--profile"_s, u"general-sqwe"_s});
    const QByteArray picture(3000, 'p');
    write(handset.filePath(u"Grüße.txt"_s), "hallo");
    write(handset.filePath(u"pic.bmp"_s), picture);
    const auto call = [&](const QStringList& arguments) {
        return run(handset.folder(), u"obexftp"_s, QStringList{u"-t"_s, handset.link} + arguments);
    };

    const Run first =
        call({u"-c"_s, u"Pictures"_s, u"-g"_s, u"Sonnenuntergang.bmp"_s, u"-p"_s, u"pic.bmp"_s, u"-l"_s});
    QCOMPARE(first.status, 255);
    QCOMPARE(contentOf(handset.filePath(u"Sonnenuntergang.bmp"_s)),
             contentOf(handset.filePath(u"state/files/Pictures/Sonnenuntergang.bmp"_s)));
    QVERIFY2(first.output.contains(u"<file name=\"pic.bmp\" size=\"3000\""_s) &&
                 first.output.contains(u"<file name=\"Küste.png\" size=\"501\""_s),
             qPrintable(first.output));

    const Run second =
        call({u"-U"_s, u"S45"_s, u"-m"_s, u"Liesmich.txt"_s, u"-m"_s, u"neu.txt"_s, u"-c"_s, u"Pictures"_s,
              u"-k"_s, u"pic.bmp"_s, u"-C"_s, u"Neu"_s, u"-p"_s, u"Grüße.txt"_s});
    QCOMPARE(second.status, 255);
    const QDir files(handset.filePath(u"state/files"_s));
    QCOMPARE(contentOf(files.filePath(u"Pictures/Neu/Grüße.txt"_s)), "hallo");
    QVERIFY(files.exists(u"neu.txt"_s) && !files.exists(u"Liesmich.txt"_s));
    QVERIFY(!files.exists(u"Pictures/pic.bmp"_s));

    QCOMPARE(call({u"-g"_s, u"pic.bmp"_s}).status, 68); // not found
    QCOMPARE(call({u"-U"_s, u"IRMC"_s, u"-g"_s, u"telecom/pb.vcf"_s}).status, 255);
    QCOMPARE(contentOf(handset.filePath(u"pb.vcf"_s)).count("X-IRMC-LUID"), 25);
    QCOMPARE(handset.end(), std::make_pair(0, QString()));
}

void RealObexClients::gammuContacts()
{
    if (!has(u"gammu"_s) || !has(u"socat"_s))
        QSKIP("gammu or socat is not installed");
    RunningHandset handset(
        {u"--model"_s, u"S68H"_s, u"--profile"_s, u"general-sqwe"_s, u"--seed"_s, u"none"_s});
    enterDataMode(handset.link);
    const Gammu gammu(handset, "connection = proxyobex\nmodel = obexirmc\n");
    write(handset.filePath(u"in.vcf"_s),
          "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Neu;Nina\r\nTEL;HOME:12345\r\nEND:VCARD\r\n");

    const Run identity = gammu.run({u"identify"_s});
    QVERIFY2(identity.output.contains(u"unknown (S68H)"_s), qPrintable(identity.output));
    // It adds the entry, and then misses the clock.
    gammu.run({u"addnew"_s, u"in.vcf"_s, u"-yes"_s, u"-memory"_s, u"ME"_s});
    const Run entry = gammu.run({u"getmemory"_s, u"ME"_s, u"1"_s});
    QCOMPARE(entry.status, 0);
    QVERIFY2(entry.output.contains(u"\"Nina\""_s) &&
                 entry.output.contains(u"LUID                 : \"0001\""_s),
             qPrintable(entry.output));
    QCOMPARE(gammu.run({u"deletememory"_s, u"ME"_s, u"1"_s}).status, 0);
    QVERIFY(!contentOf(handset.filePath(u"state/contacts.json"_s)).contains("Nina"));
}

QTEST_GUILESS_MAIN(RealObexClients)
#include "tst_RealObexClients.moc"
