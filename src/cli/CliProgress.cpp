#include "cli/CliProgress.h"

namespace kalmo::cli {

using namespace Qt::StringLiterals;

void CliProgress::phase(const QString& text, const QString& withBar)
{
    m_phase = text;
    m_phaseWithBar = withBar.isEmpty() ? text : withBar;
    m_count = 0;
    m_hasBar = false;
    draw();
}

void CliProgress::count(int number)
{
    m_count = number;
    draw();
}

void CliProgress::clear()
{
    m_out.progress({});
}

void CliProgress::SetValue(int value)
{
    m_value = value;
    if (m_hasBar)
        draw();
}

void CliProgress::SetMaximum(int maximum)
{
    m_maximum = maximum;
}

void CliProgress::SetVisible(bool visible)
{
    m_hasBar = visible;
    if (visible) // a hidden bar stays in sight until the work is done or something else begins
        draw();
}

void CliProgress::draw()
{
    QString text = m_hasBar ? m_phaseWithBar : m_phase;
    if (m_hasBar && m_maximum > 0)
        text += u": %1 of %2 (%3 %)"_s.arg(m_value).arg(m_maximum).arg(100 * m_value / m_maximum);
    else if (m_count > 0)
        text += u": %1"_s.arg(m_count);
    else
        text += u"..."_s;
    m_out.progress(text);
}

} // namespace kalmo::cli
