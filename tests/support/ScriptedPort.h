#pragma once

#include "support/FakePort.h"
#include "support/TestContext.h"

#include <deque>
#include <functional>
#include <memory>

namespace kalmo::tests {

/// How the bytes of one answer come in.
struct Delivery
{
    enum Kind { Whole, ByteByByte, Split } kind = Whole;
    qsizetype splitAt = 0; ///< size of the first part, for Split

    QString name() const;
};

/// A serial port with a scripted phone at its other end. The script holds the requests, one for each write,
/// and their answers with a delay. Any other byte, a request too many and a script that was not used up fail
/// the test, with a hex dump of the difference. After the first wrong request the port is silent.
class ScriptedPort : public FakePort
{
public:
    explicit ScriptedPort(TestContext& test, Delivery delivery = {});
    ~ScriptedPort() override;

    /// The next request, to the byte, and its answer, which begins to come in `delay` seconds later.
    ScriptedPort& expect(const QByteArray& request, const QByteArray& answer = {}, double delay = 0.02);
    /// Runs when the request that was expected last has come in, before its answer.
    ScriptedPort& then(std::function<void()> action);
    /// Of the request that was expected last, only so many bytes are taken: the line is gone.
    ScriptedPort& takingOnly(int bytes);

    /// Bytes that come without a request, `delay` seconds from now.
    void say(const QByteArray& bytes, double delay = 0);

    /// Complains about what the script still holds, and forgets it. The destructor does the same.
    void finish();

    qsizetype longestAnswer() const { return m_longestAnswer; }

    QStringList opened; ///< names by which it was to be opened, in order
    bool openable = true;
    QStringList names; ///< ports of the machine

    bool Open(const QString& portName) override;
    void Close() override { m_open = false; }
    QString openError() const override { return openable ? QString() : QStringLiteral("Port fehlt."); }
    QString openErrorEnglish() const override { return openable ? QString() : QStringLiteral("No port."); }
    int Read(char* buffer, int count) override;
    int Write(const char* bytes, int count) override;
    QByteArray ReadText() override;
    void WriteText(const QByteArray& text) override { take(text); }
    int InCount() const override { return static_cast<int>(m_received->size()); }
    int BaudRate() const override { return m_baudRate; }
    void SetSettings(const QString& settings) override;
    int CountPorts() override { return static_cast<int>(names.size()); }
    QString PortName(int index) override { return names.value(index); }

private:
    struct Step
    {
        QByteArray request;
        QByteArray answer;
        double delay = 0;
        std::function<void()> action = {};
        int taken = -1; // all
    };

    int take(const QByteArray& request);
    void deliver(const QByteArray& bytes, double delay);

    TestContext& m_test;
    Delivery m_delivery;
    std::deque<Step> m_script;
    int m_requests = 0;
    bool m_silent = false;
    qsizetype m_longestAnswer = 0;
    std::shared_ptr<QByteArray> m_received; // bytes on their way may outlive the port
    int m_baudRate = 19200;
};

/// Runs an exchange with its answers whole, byte by byte, and split in two at every place, each time with a
/// fresh context and port. Stops at the first delivery that fails the test, and says which it was.
void inEveryDelivery(const std::function<void(TestContext& test, ScriptedPort& port)>& exchange);

} // namespace kalmo::tests
