#include "ui/panels/BatchDisplay.h"

#include "app/mdlKonverter.h"

#include <cmath>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using toolkit::BatchReading;

namespace {

constexpr int barSteps = 1000; // of the whole

QString rateText(const BatchReading& reading)
{
    if (!reading.secondsLeft)
        return {};
    return u", %1/s, noch %2"_s.arg(app::FormatSizeKB(std::llround(*reading.rate)),
                                    toolkit::timeText(*reading.secondsLeft));
}

QString aheadOf(const QString& stage, const BatchReading& reading)
{
    if (reading.count <= 1)
        return stage.isEmpty() ? QString() : stage + u": "_s;
    return (stage.isEmpty() ? QString() : stage + u' ') +
           u"%1 von %2: "_s.arg(reading.index).arg(reading.count);
}

} // namespace

BatchDisplay::BatchDisplay(const toolkit::Progress& target, const toolkit::Clock& clock)
    : m_target(target), m_meter(clock)
{
}

BatchDisplay::~BatchDisplay()
{
    m_target.hide();
}

void BatchDisplay::expect(qsizetype count, qint64 total, const QString& stage, double share)
{
    m_done += m_span;
    if (m_done >= 1)
        m_done = 0;
    m_span = (1 - m_done) * share;
    m_meter.expect(count, total);
    m_stage = stage;
}

void BatchDisplay::pause()
{
    m_meter.expect(0, 0);
    m_stage.clear();
    m_isPaused = true;
}

int BatchDisplay::barValue() const
{
    return static_cast<int>(std::lround((m_done + m_span * m_meter.reading().part) * barSteps));
}

void BatchDisplay::next(qint64 size)
{
    const bool isFirst = !isBegun();
    m_meter.next(size);
    m_text.clear(); // of the file before
    m_tail.clear();
    if (isFirst)
        m_target.start(barValue(), barSteps);
    drawBar();
}

void BatchDisplay::setBytes(qint64 bytes)
{
    if (isBegun() && m_meter.setBytes(bytes))
        draw();
}

void BatchDisplay::drawBar()
{
    m_target.set(barValue());
}

void BatchDisplay::draw()
{
    drawBar();
    drawText(m_meter.reading());
}

/// Only a text that says that something is going on gets the figures. The window writes the bytes of a
/// single file into its panel itself; they stay.
void BatchDisplay::drawText(const BatchReading& reading)
{
    const QString ahead = m_text.isEmpty() ? QString() : aheadOf(m_stage, reading);
    const qsizetype dots = m_text.indexOf(u"..."_s);
    QString text = ahead + m_text;
    if (dots < 0 || reading.total == 0 || reading.done == 0) {
        m_tail.clear();
        m_target.status(text);
        return;
    }
    if (reading.count > 1) {
        text = ahead + m_text.first(dots + 3) +
               u"   %1 von %2"_s.arg(app::FormatSizeKB(reading.done), app::FormatSizeKB(reading.total));
    } else if (const QString shown = m_target.panel ? m_target.panel->Text() : QString();
               shown.startsWith(text)) {
        text = m_tail.isEmpty() || !shown.endsWith(m_tail) ? shown : shown.chopped(m_tail.size());
    }
    m_tail = rateText(reading);
    m_target.status(text + m_tail);
}

void BatchDisplay::Panel::SetText(const QString& text)
{
    display.m_text = text;
    if (display.isBegun())
        display.drawText(display.m_meter.reading());
    else
        display.m_target.status(text);
}

void BatchDisplay::Bar::SetValue(int newValue)
{
    value = newValue;
    if (display.isPassing())
        display.m_target.set(newValue);
    else if (display.isBegun() && display.m_meter.setShare(value, maximum))
        display.draw();
}

void BatchDisplay::Bar::SetMaximum(int newMaximum)
{
    maximum = newMaximum;
    if (display.isPassing() && display.m_target.bar)
        display.m_target.bar->SetMaximum(newMaximum);
}

/// In the middle of a batch the bar stays in view.
void BatchDisplay::Bar::SetVisible(bool visible)
{
    if (display.isPassing() && display.m_target.bar)
        display.m_target.bar->SetVisible(visible);
}

ReceivedBytes::ReceivedBytes(const obex::clsMmc& client, BatchDisplay& display)
{
    QObject::connect(&client, &obex::clsMmc::BytesRxed, &m_connection,
                     [&display](qint64 bytes) { display.setBytes(bytes); });
}

namespace {

QString countOf(const QStringList& names, QStringView one, QStringView many)
{
    return QString::number(names.size()) + u' ' + (names.size() == 1 ? one : many).toString();
}

QString subjectOf(const BatchResult& result)
{
    const QStringList all = result.files + result.folders;
    if (all.size() == 1)
        return all.first();
    QStringList parts;
    if (!result.files.isEmpty())
        parts.append(countOf(result.files, u"Datei", u"Dateien"));
    if (!result.folders.isEmpty())
        parts.append(countOf(result.folders, u"Ordner", u"Ordner"));
    return parts.join(u" und "_s);
}

QString durationOf(double seconds)
{
    if (seconds < 1)
        return u"in weniger als 1 s"_s;
    if (seconds < 60)
        return u"in %1 s"_s.arg(std::lround(seconds));
    return u"in %1 min"_s.arg(toolkit::timeText(seconds));
}

} // namespace

QString sentenceOf(const BatchResult& result)
{
    const bool isAnyDone = !result.files.isEmpty() || !result.folders.isEmpty();
    QStringList parts;
    if (isAnyDone || result.unknown == 0) {
        QString text = (isAnyDone ? subjectOf(result) : u"Nichts"_s) + u' ' + result.verb + result.place;
        if (isAnyDone && result.bytes > 0)
            text += u", %1 %2"_s.arg(app::FormatSizeKB(result.bytes), durationOf(result.seconds));
        parts.append(text);
    }
    if (result.unknown > 0)
        parts.append(u"%1 vielleicht %2"_s.arg(result.unknown).arg(result.verb));
    if (result.notDone > 0 && !parts.first().startsWith(u"Nichts "_s))
        parts.append(u"%1 nicht %2"_s.arg(result.notDone).arg(result.verb));
    if (result.leftOut > 0)
        parts.append(u"%1 ausgelassen"_s.arg(result.leftOut));
    return parts.join(u". "_s) + (result.isStopped ? u" (abgebrochen)."_s : u"."_s);
}

} // namespace kalmo::ui
