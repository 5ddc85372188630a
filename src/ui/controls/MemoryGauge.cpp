#include "ui/controls/MemoryGauge.h"

#include "app/mdlKonverter.h"

#include <cmath>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

struct Scale
{
    qint64 upTo; // bytes
    qint64 divisor;
};
constexpr Scale scales[] = {{10000, 1}, {100000, 10}, {1000000, 100}};
constexpr qint64 largestDivisor = 1000;

qint64 divisorFor(qint64 total)
{
    for (const Scale& scale : scales) {
        if (total >= 0 && total <= scale.upTo)
            return scale.divisor;
    }
    return largestDivisor;
}

/// Rounds a half to the even neighbour.
int rounded(double number)
{
    return app::toInt32(std::nearbyint(number));
}

} // namespace

MemoryGauge::Update MemoryGauge::setTotal(qint64 bytes)
{
    m_total = bytes;
    m_divisor = divisorFor(bytes);
    m_barMaximum = rounded(static_cast<double>(bytes) / static_cast<double>(m_divisor) + 1);
    return update();
}

MemoryGauge::Update MemoryGauge::setFree(qint64 bytes)
{
    m_free = bytes;
    return update();
}

void MemoryGauge::forget()
{
    const bool warned = m_warned;
    *this = {};
    m_warned = warned;
}

MemoryGauge::Update MemoryGauge::update()
{
    const int value = rounded(static_cast<double>(m_free) / static_cast<double>(m_divisor));
    if (value > m_barMaximum)
        return Update::None;
    m_barValue = value;
    const int percent = rounded(100.0 * value / m_barMaximum);
    m_barText = (percent >= 1 ? QString::number(percent) + u"% frei ("_s : u"kleiner 1% frei ("_s) +
                app::FormatSizeKB(m_free) + u" von "_s + app::FormatSizeKB(m_total) + u')';
    m_lowMemory = m_free < lowBytes || percent < lowPercent;
    m_showsWarning = m_lowMemory;
    if (!m_lowMemory || m_warned)
        return Update::Shown;
    m_warned = true;
    return Update::FirstWarning;
}

bool MemoryGauge::blink()
{
    if (!m_lowMemory)
        return false;
    m_showsWarning = m_blinkPhase;
    m_blinkPhase = !m_blinkPhase;
    return true;
}

QString MemoryGauge::picture() const
{
    return m_showsWarning ? u"warning"_s : u"handy"_s;
}

QString MemoryGauge::warningText()
{
    return u"Es sind weniger als "_s + app::FormatSizeKB(lowBytes) + u" bzw. weniger als "_s +
           QString::number(lowPercent) +
           u"% freier Restspeicher im Telefon übrig.\n"
           u"Das Telefon ist zwingend auf freien Speicher angewiesen. Zu wenig Speicher kann zum kompletten "
           u"Ausfall des Telefons führen und das Telefon muß zu Siemens eingeschickt werden!\n"
           u"Kopieren Sie keine weiteren Dateien auf das Telefon, sondern löschen Sie Dateien, die Sie nicht "
           u"unbedingt benötigen."_s;
}

} // namespace kalmo::ui
