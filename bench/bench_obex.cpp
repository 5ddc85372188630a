// Measures how fast files go over the line, and the processor time that they take. The emulated handset is at
// the other end of a pseudo terminal, paces its bytes to the line's rate and takes no time of its own. The
// payload's rate is compared with the line's limit when every byte of every frame is counted, in both
// directions, one after the other as the protocol wants it.

#include "Bench.h"
#include "obex/clsMmc.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace kalmo;
using namespace kalmo::bench;
using obex::clsMmc;

namespace {

constexpr int fileSize = 100000;
constexpr int baudRate = 115200;
constexpr int phoneType = 12;
constexpr double leastRate = 0.97;
constexpr double mostProcessor = 0.03;

constexpr int largeSize = 10000000;
constexpr int largeBaudRate = 4000000; // so that it takes half a minute
constexpr double mostMemory = 40;      // megabytes above what the program takes before

constexpr int foreignBaudRate = 57600; // the one that it chooses
constexpr int foreignPacket = 480;     // the largest that it reads

QString makeFile(const QTemporaryDir& folder, const QString& name, int size)
{
    QFile file(folder.filePath(name));
    const bool written = file.open(QIODevice::WriteOnly) && file.write(QByteArray(size, 'w')) == size;
    return written ? file.fileName() : QString();
}

QStringList handsetArguments(int maxPacket, int rate)
{
    return {u"--model"_s,
            u"SL450HX"_s,
            u"--at-once"_s,
            u"--baud"_s,
            QString::number(rate),
            u"--max-packet"_s,
            QString::number(maxPacket)};
}

/// Prints one transfer: its rate beside that of its bytes on the line, and the processor time.
void print(const QString& what, const Watch& watch, qint64 payload, int rate)
{
    const double elapsed = watch.elapsed();
    const double processor = watch.processor();
    const double onTheLine = watch.bytes() * bitsPerByte / rate;
    std::printf("%s: %.2f s, %.2f kB/s; the frames allow %.2f kB/s\n", qPrintable(what), elapsed,
                static_cast<double>(payload) / elapsed / 1000,
                static_cast<double>(payload) / onTheLine / 1000);
    printRow(u"  rate, as a share of what the frames allow"_s, onTheLine / elapsed, leastRate);
    printRow(u"  processor time, as a share of the time elapsed"_s, processor / elapsed, mostProcessor);
}

bool measureTransfers(int maxPacket, int rate)
{
    const QTemporaryDir folder;
    const QString device = folder.filePath(u"line"_s);
    const QString file = makeFile(folder, u"100kB.bin"_s, fileSize);
    const HandsetProcess handset(device, handsetArguments(maxPacket, rate));
    Engine engine(folder.path(), phoneType);
    clsMmc client(engine.line);
    if (!handset.isReady || !engine.open(device, rate) || !client.Online({}))
        return false;
    const QString frames =
        u"frames of %1 bytes (announced: %2) at %3 baud"_s.arg(client.MaxPacket()).arg(maxPacket).arg(rate);
    const Watch put(engine.port);
    if (!client.PutFile(file, {}))
        return false;
    print(u"put, %1"_s.arg(frames), put, fileSize, rate);
    QByteArray back;
    const Watch get(engine.port);
    if (!client.GetFile(QFileInfo(file).fileName(), back, {}) || back.size() != fileSize)
        return false;
    print(u"get, %1"_s.arg(frames), get, fileSize, rate);
    return client.Offline({});
}

/// Megabytes: a line of the process's own record, "VmRSS" or "VmHWM".
double memory(const QByteArray& key)
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(key + ':'))
            return line.mid(key.size() + 1).trimmed().chopped(3).toDouble() / 1000;
    }
    return 0;
}

bool measureMemory()
{
    const QTemporaryDir folder;
    const QString device = folder.filePath(u"line"_s);
    const HandsetProcess handset(device, handsetArguments(4096, largeBaudRate) +
                                             QStringList{u"--file-memory"_s, u"64000000"_s});
    Engine engine(folder.path(), phoneType);
    clsMmc client(engine.line);
    if (!handset.isReady || !engine.open(device, largeBaudRate) || !client.Online({}) ||
        !client.PutFile(makeFile(folder, u"10MB.bin"_s, largeSize), {}))
        return false;
    QFile reset(u"/proc/self/clear_refs"_s); // the highest mark starts anew
    if (reset.open(QIODevice::WriteOnly))
        reset.write("5");
    reset.close();
    const double idle = memory("VmRSS");
    QByteArray back;
    const QString target = folder.filePath(u"back.bin"_s);
    if (!client.GetFile(u"10MB.bin"_s, back, {}, target) || QFileInfo(target).size() != largeSize)
        return false;
    std::printf("get of 10 MB into a file: %.1f MB before, %.1f MB at most\n", idle, memory("VmHWM"));
    printRow(u"  megabytes above idle"_s, memory("VmHWM") - idle, mostMemory);
    return client.Offline({});
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A run of the general client, whose status says nothing: it is 255 after a success.
struct ForeignRun
{
    ForeignRun(const QTemporaryDir& folder, const QStringList& arguments)
    {
        QProcess process;
        QElapsedTimer watch;
        process.setWorkingDirectory(folder.path());
        watch.start();
        process.start(u"obexftp"_s, QStringList{u"-t"_s, u"line"_s} + arguments);
        process.waitForFinished(120000);
        seconds = static_cast<double>(watch.nsecsElapsed()) / 1e9;
        out = process.readAllStandardOutput();
    }

    double seconds = 0;
    QByteArray out;
};

void printForeign(const char* what, double seconds)
{
    const double frames = fileSize / (foreignPacket - 6.0);
    const double onTheLine = (fileSize + frames * (6 + 3)) * bitsPerByte / foreignBaudRate;
    std::printf("obexftp, %s, frames of %d bytes at %d baud: about %.2f s\n", what, foreignPacket,
                foreignBaudRate, seconds);
    printRow(u"  rate, as a share of what the frames allow"_s, onTheLine / seconds, leastRate);
}

/// The same handset and another client: what is lost with ours is not lost in the handset.
void measureForeignClient()
{
    if (QStandardPaths::findExecutable(u"obexftp"_s).isEmpty()) {
        std::printf("obexftp is not installed and was not measured\n");
        return;
    }
    const QTemporaryDir folder;
    const QString name = u"foreign.bin"_s;
    const QString file = makeFile(folder, name, fileSize);
    const QByteArray content = contentOf(file);
    const HandsetProcess handset(
        folder.filePath(u"line"_s),
        handsetArguments(foreignPacket, foreignBaudRate) +
            QStringList{u"--profile"_s, u"general-sqwe"_s, u"--state"_s, folder.filePath(u"state"_s)});
    const ForeignRun first(folder, {u"-X"_s}); // leaves the handset in data mode, where the others find it
    const ForeignRun put(folder, {u"-p"_s, name});
    const bool isPut = contentOf(folder.filePath(u"state/files/"_s + name)) == content;
    QFile::remove(file);
    const ForeignRun get(folder, {u"-g"_s, name});
    const bool isGot = contentOf(file) == content;
    const ForeignRun empty(folder, {u"-X"_s});
    if (!isPut || !isGot || empty.out.isEmpty()) {
        std::printf("obexftp failed and was not measured\n");
        return;
    }
    printForeign("put", put.seconds - empty.seconds);
    printForeign("get", get.seconds - empty.seconds);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    std::printf("%d bytes\n\n", fileSize);
    printHeading();
    bool done = true;
    for (const int maxPacket : {1024, 4096, 16390})
        done = measureTransfers(maxPacket, baudRate) && done;
    done = measureTransfers(foreignPacket, foreignBaudRate) && done; // as the foreign client has it
    measureForeignClient();
    done = measureMemory() && done;
    if (!done)
        std::fprintf(stderr, "not everything could be transferred\n");
    return done ? 0 : 1;
}
