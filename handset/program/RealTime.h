#pragma once

#include "handset/Seams.h"

#include <QElapsedTimer>
#include <QSocketNotifier>

#include <map>
#include <memory>

namespace kalmo::handset {

/// Real time. The toolkit's timers know whole milliseconds only, in which eleven bytes pass a fast line. Here
/// an action runs as exactly as the system can.
class RealTime : public TimeSource
{
public:
    RealTime();
    ~RealTime() override;
    Q_DISABLE_COPY_MOVE(RealTime)

    double now() const override { return static_cast<double>(m_sinceStart.nsecsElapsed()) / 1e9; }
    QDateTime dateTime() const override { return QDateTime::currentDateTime(); }
    void after(double seconds, std::function<void()> action) override;

private:
    void arm();
    void runDue();

    QElapsedTimer m_sinceStart;
    int m_timer; // a descriptor that becomes readable when the first action is due
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::multimap<double, std::function<void()>> m_actions; // by the time when they are due
};

} // namespace kalmo::handset
