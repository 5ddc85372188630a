#pragma once

#include "handset/Seams.h"

#include <QElapsedTimer>

namespace kalmo::handset {

/// Time as it passes, by the event loop's precise timers.
class RealTime : public TimeSource
{
public:
    RealTime() { m_sinceStart.start(); }

    double now() const override { return static_cast<double>(m_sinceStart.nsecsElapsed()) / 1e9; }
    QDateTime dateTime() const override { return QDateTime::currentDateTime(); }
    void after(double seconds, std::function<void()> action) override;

private:
    QElapsedTimer m_sinceStart;
};

} // namespace kalmo::handset
