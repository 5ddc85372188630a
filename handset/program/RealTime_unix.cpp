// Exact timers on Unix.

#include "handset/program/RealTime.h"

#include <algorithm>
#include <cmath>

#include <sys/timerfd.h>
#include <unistd.h>

namespace kalmo::handset {

namespace {
constexpr double soonest = 1e-9; // zero would disarm the timer
} // namespace

RealTime::RealTime() : m_timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_timer < 0)
        qFatal("The system has no timer to give.");
    m_sinceStart.start();
    m_notifier = std::make_unique<QSocketNotifier>(m_timer, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { runDue(); });
}

RealTime::~RealTime()
{
    m_notifier.reset();
    close(m_timer);
}

void RealTime::after(double seconds, std::function<void()> action)
{
    m_actions.emplace(now() + seconds, std::move(action));
    arm();
}

void RealTime::arm()
{
    itimerspec when{};
    if (!m_actions.empty()) {
        const double wait = std::max(m_actions.begin()->first - now(), soonest);
        when.it_value.tv_sec = static_cast<time_t>(wait);
        when.it_value.tv_nsec =
            std::min(static_cast<long>(std::ceil((wait - std::floor(wait)) * 1e9)), 999999999L);
    }
    timerfd_settime(m_timer, 0, &when, nullptr);
}

void RealTime::runDue()
{
    quint64 expirations = 0;
    if (read(m_timer, &expirations, sizeof expirations) < 0)
        return; // armed again in the meantime
    const double present = now();
    while (!m_actions.empty() && m_actions.begin()->first <= present) {
        const auto action = std::move(m_actions.extract(m_actions.begin()).mapped());
        action();
    }
    arm();
}

} // namespace kalmo::handset
