#include "handset/Pacer.h"

#include <algorithm>
#include <cmath>

namespace kalmo::handset {

namespace {
constexpr double tick = 0.004;
constexpr int bitsPerByte = 10;
constexpr double timerError = 2e-6; // seconds by which a timer may come early
} // namespace

void Pacer::setRate(int baud)
{
    if (baud > 0)
        m_bytesPerSecond = static_cast<double>(baud) / bitsPerByte;
}

void Pacer::push(const QByteArray& bytes)
{
    if (bytes.isEmpty())
        return;
    const bool wasIdle = isIdle();
    m_pieces.push_back(bytes);
    m_waiting += bytes.size();
    if (!wasIdle)
        return;
    m_passedUntil = m_timers.now();
    schedule();
}

void Pacer::clear()
{
    m_timers.forgetAll();
    m_pieces.clear();
    m_waiting = 0;
}

double Pacer::nextCount() const
{
    if (m_whole && !m_bytewise)
        return static_cast<double>(m_pieces.front().size());
    return m_bytewise ? 1 : std::min(static_cast<double>(m_waiting), std::ceil(tick * m_bytesPerSecond));
}

void Pacer::schedule()
{
    const double due = m_passedUntil + nextCount() / m_bytesPerSecond;
    m_timers.after(std::max(due - m_timers.now(), 0.0), [this] { deliverDue(); });
}

QByteArray Pacer::takeDue(double elapsed)
{
    auto due = static_cast<qsizetype>(std::floor((elapsed + timerError) * m_bytesPerSecond));
    QByteArray out;
    while (due > 0 && !m_pieces.empty()) {
        QByteArray& front = m_pieces.front();
        const qsizetype count = std::min(due, front.size());
        out += front.first(count);
        front.remove(0, count);
        due -= count;
        if (front.isEmpty())
            m_pieces.pop_front();
    }
    return out;
}

void Pacer::deliverDue()
{
    QByteArray out;
    if (m_whole && !m_bytewise) {
        out = m_pieces.front();
        m_pieces.pop_front();
    } else {
        out = takeDue(m_timers.now() - m_passedUntil);
    }
    m_waiting -= out.size();
    m_passedUntil += static_cast<double>(out.size()) / m_bytesPerSecond;
    const bool drained = isIdle();
    if (!drained)
        schedule();
    m_deliver(out);
    if (drained && isIdle())
        m_drained();
}

} // namespace kalmo::handset
