// How much a long phonebook costs: the processor while it is read, and the time beyond what the protocol
// itself takes. The emulated handset stands at the other end of a pseudo terminal and paces its bytes to the
// line's rate.

#include "app/SystemPlatform.h"
#include "handset/at/AtCommand.h"
#include "link/QtSerialPort.h"
#include "phonedata/ClassicPhonebook.h"
#include "toolkit/EventLoopClock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <cstdio>
#include <ctime>

using namespace Qt::StringLiterals;
using namespace kalmo;

namespace {

constexpr int entries = 200;
constexpr int baudRate = 19200;
constexpr double bitsPerByte = 10; // with start and stop bit
constexpr double mostProcessor = 0.02;
constexpr double mostElapsed = 1.05;

class SilentDialogs : public toolkit::Dialogs
{
public:
    toolkit::Answer Show(const toolkit::Message& message) override
    {
        std::fprintf(stderr, "%s\n", qPrintable(message.text));
        return toolkit::Answer::Cancel;
    }
    QString OpenFile(const toolkit::FileRequest&) override { return {}; }
    QString SaveFile(const toolkit::FileRequest&) override { return {}; }
    QString PickFolder(const QString&, const QString&) override { return {}; }
};

class AbortingEnding : public toolkit::Ending
{
    void end() override { std::abort(); }
};

class NoDevices : public link::DeviceList
{
public:
    QList<link::SerialDevice> devices() override { return {}; }
};

/// The real port, which counts its bytes in both directions.
class CountingPort : public link::SPortAx
{
public:
    explicit CountingPort(link::SPortAx& port) : m_port(port) {}
    qint64 bytes = 0;

    bool Open(const QString& name) override { return m_port.Open(name); }
    void Close() override { m_port.Close(); }
    bool IsOpen() const override { return m_port.IsOpen(); }
    QString openError() const override { return m_port.openError(); }
    QString openErrorEnglish() const override { return m_port.openErrorEnglish(); }
    int Read(char* buffer, int count) override
    {
        const int taken = m_port.Read(buffer, count);
        bytes += taken;
        return taken;
    }
    int Write(const char* text, int count) override
    {
        bytes += count;
        return m_port.Write(text, count);
    }
    QByteArray ReadText() override { return m_port.ReadText(); }
    void WriteText(const QByteArray& text) override
    {
        Write(text.constData(), static_cast<int>(text.size()));
    }
    int InCount() const override { return m_port.InCount(); }
    int InBufferSize() const override { return m_port.InBufferSize(); }
    void SetInBufferSize(int size) override { m_port.SetInBufferSize(size); }
    int OutBufferSize() const override { return m_port.OutBufferSize(); }
    void SetOutBufferSize(int size) override { m_port.SetOutBufferSize(size); }
    int BaudRate() const override { return m_port.BaudRate(); }
    void SetSettings(const QString& settings) override { m_port.SetSettings(settings); }
    void SetControlLines(bool on) override { m_port.SetControlLines(on); }
    int CountPorts() override { return m_port.CountPorts(); }
    QString PortName(int index) override { return m_port.PortName(index); }

private:
    link::SPortAx& m_port;
};

bool startHandset(QProcess& handset, const QString& line)
{
    handset.start(QCoreApplication::applicationDirPath() + u"/../bin/kalmo-handset"_s,
                  {u"--model"_s, u"PICASSO"_s, u"--entries"_s, QString::number(entries), u"--link"_s, line});
    return handset.waitForReadyRead();
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// Pauses that the reading of a store consists of, in seconds: behind opening, behind each reply, in closing.
double pausesOfReading(int count)
{
    return 0.5 + (count + 1) * 0.1 + 3.5;
}

/// Seconds that the emulated handset itself takes to answer: that is no cost of the client's.
double handsetSeconds(int count)
{
    double seconds = 0;
    for (const handset::AtCommand& command : handset::storeCommands()) {
        if (QByteArrayView(command.name) == QByteArrayView("^WSRE"))
            seconds += (count + 1) * command.seconds;
        else if (QByteArrayView(command.name) == QByteArrayView("^WSSL") &&
                 command.forms == handset::Form::Set)
            seconds += command.seconds;
    }
    return seconds;
}

void printRow(const char* what, double value, double allowed)
{
    std::printf("%-46s %8.4f %8.4f %8.2f\n", what, value, allowed, value / allowed);
}

/// The engine on a serial port.
struct Engine
{
    explicit Engine(const QString& storage)
    {
        sy.Paths.Storage = storage;
        sy.PhoneType = 4;
    }
    bool open(const QString& device)
    {
        table.useDevice(1, device);
        if (!port.Open(link::Line::ComPortName(1)))
            return false;
        line.ConfigurePort();
        port.SetSettings(u"%1,N,8,1"_s.arg(baudRate));
        QByteArray answer;
        return line.exchange(answer, "ATZ\r", 1);
    }

    app::Sy sy;
    toolkit::EventLoopClock clock;
    SilentDialogs dialogs;
    AbortingEnding ending;
    app::SystemPlatform platform;
    app::Settings settings{sy};
    app::DebugLog log{sy, clock, {}};
    app::Context context{sy, clock, dialogs, ending, platform, settings, log};
    NoDevices devices;
    link::PortTable table{settings, devices};
    link::QtSerialPort serial{table};
    CountingPort port{serial};
    link::Line line{context, port};
    phonedata::PhoneMemory memory;
};

/// Seconds, and bytes in both directions.
struct Cost
{
    double elapsed = 0;
    double processor = 0;
    qint64 bytes = 0;
};

/// Reads the phonebook; false if it did not come whole.
bool measure(Engine& engine, Cost& cost)
{
    const auto list = phonedata::makePhonebookRows();
    engine.port.bytes = 0;
    QElapsedTimer watch;
    watch.start();
    const double before = processorSeconds();
    const bool done = phonedata::ReadPB_TB({engine.line, engine.memory, *list, nullptr, {}});
    cost = {static_cast<double>(watch.nsecsElapsed()) / 1e9, processorSeconds() - before, engine.port.bytes};
    return done && list->count() == entries;
}

void print(const Cost& cost)
{
    const double pauses = pausesOfReading(entries);
    const double onTheLine = static_cast<double>(cost.bytes) * bitsPerByte / baudRate;
    const double handset = handsetSeconds(entries);
    std::printf("%d entries at %d baud took %.2f s:\n"
                "  %6.2f s  pauses of the protocol\n"
                "  %6.2f s  %lld bytes on the line\n"
                "  %6.2f s  the handset's own time to answer\n\n",
                entries, baudRate, cost.elapsed, pauses, onTheLine, static_cast<long long>(cost.bytes),
                handset);
    std::printf("%-46s %8s %8s %8s\n", "", "measured", "allowed", "ratio");
    printRow("processor time, as a share of the time elapsed", cost.processor / cost.elapsed, mostProcessor);
    printRow("time elapsed, over pauses, bytes and handset", cost.elapsed / (pauses + onTheLine + handset),
             mostElapsed);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    const QString device = folder.filePath(u"line"_s);
    QProcess handset;
    Engine engine(folder.path());
    Cost cost;
    const bool done = startHandset(handset, device) && engine.open(device) && measure(engine, cost);
    handset.terminate();
    handset.waitForFinished();
    if (done)
        print(cost);
    else
        std::fprintf(stderr, "the phonebook could not be read\n");
    return done ? 0 : 1;
}
