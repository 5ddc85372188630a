#include "toolkit/BatchMeter.h"

#include <algorithm>
#include <cmath>

namespace kalmo::toolkit {

using namespace Qt::StringLiterals;

namespace {
constexpr double longEnough = 1; // seconds before which a rate says nothing
}

void BatchMeter::expect(qsizetype count, qint64 total)
{
    *this = BatchMeter(*m_clock);
    m_count = count;
    m_total = total;
}

void BatchMeter::next(qint64 size)
{
    m_passed += m_size;
    m_transferred += m_bytes;
    m_size = size;
    m_bytes = 0;
    m_share = 0;
    ++m_index;
}

bool BatchMeter::setBytes(qint64 bytes)
{
    const qint64 known = std::min(bytes, m_size);
    if (m_size <= 0 || known <= m_bytes)
        return false;
    m_bytes = known;
    m_share = static_cast<double>(known) / static_cast<double>(m_size);
    return true;
}

bool BatchMeter::setShare(int value, int maximum)
{
    const double share = maximum > 0 ? std::clamp(static_cast<double>(value) / maximum, 0.0, 1.0) : 0;
    if (m_size > 0)
        return setBytes(std::llround(share * static_cast<double>(m_size)));
    if (share <= m_share)
        return false;
    m_share = share;
    return true;
}

BatchReading BatchMeter::reading() const
{
    BatchReading reading{.index = m_index, .count = m_count, .done = m_passed + m_bytes, .total = m_total};
    reading.seconds = m_clock->secondsSince(m_start);
    if (m_total > 0)
        reading.part = static_cast<double>(reading.done) / static_cast<double>(m_total);
    else if (m_count > 0 && m_index > 0)
        reading.part = (static_cast<double>(m_index - 1) + m_share) / static_cast<double>(m_count);
    reading.part = std::clamp(reading.part, 0.0, 1.0);
    const double rate = static_cast<double>(m_transferred + m_bytes) / std::max(reading.seconds, longEnough);
    if (reading.seconds >= longEnough && rate >= 1) {
        reading.rate = rate;
        if (m_total > 0)
            reading.secondsLeft = static_cast<double>(std::max<qint64>(m_total - reading.done, 0)) / rate;
    }
    return reading;
}

QString timeText(double seconds)
{
    const qint64 whole = std::llround(std::max(seconds, 0.0));
    const QString minutes = u"%1:%2"_s.arg(whole / 60 % 60).arg(whole % 60, 2, 10, QChar(u'0'));
    if (whole < 3600)
        return minutes;
    return u"%1:%2"_s.arg(whole / 3600).arg(minutes.rightJustified(5, u'0'));
}

} // namespace kalmo::toolkit
