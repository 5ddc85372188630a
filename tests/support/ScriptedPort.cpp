#include "support/ScriptedPort.h"

#include <QTest>

#include <algorithm>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

namespace {

constexpr double betweenBytes = 0.001;
constexpr double betweenParts = 0.05;

QString dump(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.toHex(' '));
}

} // namespace

QString Delivery::name() const
{
    if (kind == Split)
        return u"answers split after %1 bytes"_s.arg(splitAt);
    return kind == Whole ? u"answers whole"_s : u"answers byte by byte"_s;
}

ScriptedPort::ScriptedPort(TestContext& test, Delivery delivery)
    : m_test(test), m_delivery(delivery), m_received(std::make_shared<QByteArray>())
{
}

ScriptedPort::~ScriptedPort()
{
    finish();
}

ScriptedPort& ScriptedPort::expect(const QByteArray& request, const QByteArray& answer, double delay)
{
    m_script.push_back({request, answer, delay});
    m_longestAnswer = std::max(m_longestAnswer, answer.size());
    return *this;
}

ScriptedPort& ScriptedPort::then(std::function<void()> action)
{
    m_script.back().action = std::move(action);
    return *this;
}

ScriptedPort& ScriptedPort::takingOnly(int bytes)
{
    m_script.back().taken = bytes;
    return *this;
}

void ScriptedPort::say(const QByteArray& bytes, double delay)
{
    m_longestAnswer = std::max(m_longestAnswer, bytes.size());
    deliver(bytes, delay);
}

void ScriptedPort::finish()
{
    if (!m_silent && !m_script.empty()) {
        m_test.verdict.complain(u"%1 expected requests never came, the next one: %2"_s.arg(m_script.size())
                                    .arg(dump(m_script.front().request)));
    }
    m_script.clear();
}

int ScriptedPort::take(const QByteArray& request)
{
    ++m_requests;
    const int size = static_cast<int>(request.size());
    if (m_silent)
        return size;
    if (m_script.empty() || m_script.front().request != request) {
        m_silent = true;
        const QString wanted = m_script.empty() ? u"nothing"_s : dump(m_script.front().request);
        m_test.verdict.complain(
            u"request %1:\n  came   %2\n  wanted %3"_s.arg(m_requests).arg(dump(request), wanted));
        return size;
    }
    const Step step = std::move(m_script.front());
    m_script.pop_front();
    if (step.action)
        step.action();
    deliver(step.answer, step.delay);
    return step.taken < 0 ? size : step.taken;
}

void ScriptedPort::deliver(const QByteArray& bytes, double delay)
{
    const auto arriveAfter = [this](double seconds, const QByteArray& part) {
        m_test.clock.after(seconds, [received = m_received, part] { received->append(part); });
    };
    if (bytes.isEmpty())
        return;
    if (m_delivery.kind == Delivery::ByteByByte) {
        for (qsizetype index = 0; index < bytes.size(); ++index)
            arriveAfter(delay + static_cast<double>(index) * betweenBytes, bytes.mid(index, 1));
    } else if (m_delivery.kind == Delivery::Split && m_delivery.splitAt < bytes.size()) {
        arriveAfter(delay, bytes.first(m_delivery.splitAt));
        arriveAfter(delay + betweenParts, bytes.sliced(m_delivery.splitAt));
    } else {
        arriveAfter(delay, bytes);
    }
}

bool ScriptedPort::Open(const QString& portName)
{
    opened.append(portName);
    m_open = openable;
    return m_open;
}

int ScriptedPort::Read(char* buffer, int count)
{
    const int taken = std::min(count, InCount());
    std::copy_n(m_received->constData(), taken, buffer);
    m_received->remove(0, taken);
    return taken;
}

int ScriptedPort::Write(const char* bytes, int count)
{
    return take(QByteArray(bytes, count));
}

QByteArray ScriptedPort::ReadText()
{
    return std::exchange(*m_received, {});
}

void ScriptedPort::SetSettings(const QString& settings)
{
    m_baudRate = settings.section(u',', 0, 0).toInt();
}

void inEveryDelivery(const std::function<void(TestContext& test, ScriptedPort& port)>& exchange)
{
    const auto run = [&](Delivery delivery) {
        qsizetype longest = 0;
        {
            TestContext test;
            ScriptedPort port(test, delivery);
            exchange(test, port);
            longest = port.longestAnswer();
        }
        if (QTest::currentTestFailed())
            qWarning("failed with %s", qPrintable(delivery.name()));
        return QTest::currentTestFailed() ? 0 : longest;
    };
    const qsizetype longest = run({Delivery::Whole});
    if (longest == 0 || run({Delivery::ByteByByte}) == 0)
        return;
    for (qsizetype at = 1; at < longest && !QTest::currentTestFailed(); ++at)
        run({Delivery::Split, at});
}

} // namespace kalmo::tests
