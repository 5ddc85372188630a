#pragma once

#include "handset/Timers.h"

#include <deque>

namespace kalmo::handset {

/// One direction of a serial line: bytes come out at the line's rate, ten bits each, a few milliseconds'
/// worth at a time.
class Pacer
{
public:
    using Deliver = std::function<void(const QByteArray&)>;

    Pacer(TimeSource& time, Deliver deliver) : m_timers(time), m_deliver(std::move(deliver)) {}

    /// Baud rate from now on; 0 or less leaves it.
    void setRate(int baud);
    /// A piece that was pushed as one comes out as one, when its last byte has passed the line.
    void keepPiecesWhole(bool on) { m_whole = on; }
    /// Sends each byte alone, even of a piece that would stay whole.
    void deliverBytewise(bool on) { m_bytewise = on; }
    /// Runs each time that the last byte has come out.
    void whenDrained(std::function<void()> action) { m_drained = std::move(action); }

    void push(const QByteArray& bytes);
    bool isIdle() const { return m_pieces.empty(); }
    void clear();

private:
    double nextCount() const;
    void schedule();
    void deliverDue();
    QByteArray takeDue(double elapsed);

    Timers m_timers;
    Deliver m_deliver;
    std::function<void()> m_drained = [] {};
    std::deque<QByteArray> m_pieces;
    qsizetype m_waiting = 0; // bytes in all pieces
    double m_bytesPerSecond = 1920;
    double m_passedUntil = 0; // when the last byte that came out had passed the line
    bool m_whole = false;
    bool m_bytewise = false;
};

} // namespace kalmo::handset
