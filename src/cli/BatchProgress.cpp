#include "cli/BatchProgress.h"

#include "cli/FolderRows.h"

#include <algorithm>
#include <cmath>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

namespace {
constexpr double longEnough = 1; // seconds before which a rate says nothing
}

BatchProgress::BatchProgress(Output& out, const toolkit::Clock& clock, const QString& verb)
    : m_out(out), m_clock(clock), m_verb(verb), m_start(clock.Timer())
{
}

void BatchProgress::expect(qsizetype count, qint64 total)
{
    m_count = count;
    m_total = total;
    m_start = m_clock.Timer();
}

void BatchProgress::next(const QString& name, qint64 size)
{
    m_passed += m_size;
    m_transferred += m_bytes;
    m_name = name;
    m_size = size;
    m_bytes = 0;
    ++m_index;
    draw();
}

void BatchProgress::setBytes(qint64 bytes)
{
    m_bytes = std::min(bytes, m_size);
    draw();
}

void BatchProgress::SetValue(int value)
{
    m_value = value;
    if (m_maximum > 0)
        setBytes(std::max(m_bytes, m_size * std::min(value, m_maximum) / m_maximum));
}

void BatchProgress::draw()
{
    if (m_index == 0)
        return;
    const qint64 done = m_passed + m_bytes;
    QString text =
        u"%1 %2 (%3 of %4)"_s.arg(m_verb, m_name, QString::number(m_index), QString::number(m_count));
    if (m_total > 0)
        text += u": %1 % of %2"_s.arg(100 * done / m_total).arg(sizeText(m_total));
    const double seconds = m_clock.secondsSince(m_start);
    const double rate = static_cast<double>(m_transferred + m_bytes) / std::max(seconds, longEnough);
    if (seconds >= longEnough && rate >= 1)
        text += u", %1/s, %2 left"_s.arg(sizeText(std::llround(rate)),
                                         timeText(static_cast<double>(m_total - done) / rate));
    m_out.progress(text);
}

QString timeText(double seconds)
{
    const qint64 whole = std::llround(std::max(seconds, 0.0));
    const QString minutes = u"%1:%2"_s.arg(whole / 60 % 60).arg(whole % 60, 2, 10, QChar(u'0'));
    if (whole < 3600)
        return minutes;
    return u"%1:%2"_s.arg(whole / 3600).arg(minutes.rightJustified(5, u'0'));
}

} // namespace kalmo::cli
