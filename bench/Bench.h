#pragma once

#include "app/SystemPlatform.h"
#include "link/mdlComm.h"
#include "link/PhoneModels.h"
#include "link/PortTable.h"
#include "link/QtSerialPort.h"
#include "toolkit/EventLoopClock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <cstdio>
#include <ctime>

namespace kalmo::bench {

using namespace Qt::StringLiterals;

constexpr double bitsPerByte = 10; // with start and stop bit

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
    void end(int) override { std::abort(); }
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

/// The engine on a serial port.
struct Engine
{
    Engine(const QString& storage, int phoneType)
    {
        sy.Paths.Storage = storage;
        sy.PhoneType = phoneType;
        sy.blnTxLfTerminator = link::needsLfTerminator(phoneType);
    }
    bool open(const QString& device, int baudRate)
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
};

/// The emulated handset on a pseudo terminal of its own, until it goes out of scope.
class HandsetProcess
{
public:
    HandsetProcess(const QString& line, const QStringList& arguments)
    {
        m_process.start(QCoreApplication::applicationDirPath() + u"/../bin/kalmo-handset"_s,
                        QStringList{u"--link"_s, line} + arguments);
        isReady = m_process.waitForReadyRead();
    }
    ~HandsetProcess()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(HandsetProcess)

    bool isReady = false;

private:
    QProcess m_process;
};

/// Measures the work since it was made: seconds elapsed and of the processor, bytes in both directions.
class Watch
{
public:
    explicit Watch(const CountingPort& port) : m_port(port), m_bytes(port.bytes) { m_watch.start(); }

    double elapsed() const { return static_cast<double>(m_watch.nsecsElapsed()) / 1e9; }
    double processor() const { return processorSeconds() - m_processor; }
    double bytes() const { return static_cast<double>(m_port.bytes - m_bytes); }

private:
    static double processorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

    const CountingPort& m_port;
    qint64 m_bytes;
    QElapsedTimer m_watch;
    double m_processor = processorSeconds();
};

inline void printHeading(const char* ratio = "ratio")
{
    std::printf("%-58s %9s %9s %8s\n", "", "measured", "allowed", ratio);
}

inline void printRow(const QString& what, double value, double allowed)
{
    std::printf("%-58s %9.4f %9.4f %8.2f\n", qPrintable(what), value, allowed, value / allowed);
}

} // namespace kalmo::bench
