#include "cli/BatchProgress.h"

#include "cli/FolderRows.h"

#include <cmath>

namespace kalmo::cli {

using namespace Qt::StringLiterals;

BatchProgress::BatchProgress(Output& out, const toolkit::Clock& clock, const QString& verb)
    : m_out(out), m_verb(verb), m_meter(clock)
{
}

void BatchProgress::next(const QString& name, qint64 size)
{
    m_name = name;
    m_meter.next(size);
    draw();
}

void BatchProgress::setBytes(qint64 bytes)
{
    if (m_meter.setBytes(bytes))
        draw();
}

void BatchProgress::SetValue(int value)
{
    m_value = value;
    if (m_meter.setShare(value, m_maximum))
        draw();
}

void BatchProgress::draw()
{
    const toolkit::BatchReading reading = m_meter.reading();
    if (reading.index == 0)
        return;
    QString text = u"%1 %2 (%3 of %4)"_s.arg(m_verb, m_name, QString::number(reading.index),
                                             QString::number(reading.count));
    if (reading.total > 0)
        text += u": %1 % of %2"_s.arg(100 * reading.done / reading.total).arg(sizeText(reading.total));
    if (reading.secondsLeft)
        text += u", %1/s, %2 left"_s.arg(sizeText(std::llround(*reading.rate)),
                                         toolkit::timeText(*reading.secondsLeft));
    m_out.progress(text);
}

} // namespace kalmo::cli
