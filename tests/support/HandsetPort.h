#pragma once

#include "handset/Handset.h"
#include "support/FakePort.h"
#include "support/VirtualClock.h"

#include <memory>

namespace kalmo::tests {

class Verdict;
using handset::Faults;

/// A serial port with the emulated handset at its other end, on virtual time. It is open from the start, at
/// the handset's own rate.
class HandsetPort : public FakePort, private handset::TimeSource, private handset::Wire
{
public:
    explicit HandsetPort(VirtualClock& clock, const handset::Options& options = {});
    /// The client's violations fail the test when the port goes out of scope.
    HandsetPort(VirtualClock& clock, Verdict& verdict, const handset::Options& options = {});
    ~HandsetPort() override;

    handset::Handset& handset() { return *m_handset; }

    /// Violations do not fail the test by themselves: it looks at them.
    void judgeNothing() { m_verdict = nullptr; }

    /// From now on the handset does not notice that the port is closed, as at a plain serial line.
    void hideClosing() { m_isClosingHidden = true; }

    bool Open(const QString& portName) override;
    void Close() override;
    QString openError() const override;
    QString openErrorEnglish() const override;
    int Read(char* buffer, int count) override;
    int Write(const char* bytes, int count) override;
    QByteArray ReadText() override { return std::exchange(m_received, {}); }
    void WriteText(const QByteArray& text) override
    {
        Write(text.constData(), static_cast<int>(text.size()));
    }
    int InCount() const override { return static_cast<int>(m_received.size()); }
    int BaudRate() const override { return m_handset->baudRate(); }
    void SetSettings(const QString& settings) override;
    int CountPorts() override { return 1; }
    QString PortName(int) override { return QStringLiteral("COM1"); }

private:
    bool isUnplugged() const { return m_clock.elapsed() < m_unpluggedUntil; }

    double now() const override { return m_clock.elapsed(); }
    QDateTime dateTime() const override { return m_clock.Now(); }
    void after(double seconds, std::function<void()> action) override
    {
        m_clock.after(seconds, std::move(action));
    }
    void send(const QByteArray& bytes) override;
    void hangUp() override;

    VirtualClock& m_clock;
    Verdict* m_verdict = nullptr;
    std::unique_ptr<handset::Handset> m_handset;
    QByteArray m_received;
    bool m_isClosingHidden = false;
    double m_unpluggedUntil = 0; // the line has dropped
};

} // namespace kalmo::tests
