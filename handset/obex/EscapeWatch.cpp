#include "handset/obex/EscapeWatch.h"

#include <algorithm>

namespace kalmo::handset {

namespace {
const QByteArray pluses = "+++";
constexpr double roundingError = 1e-3;
} // namespace

void EscapeWatch::reset()
{
    m_timers.forgetAll();
    m_held.clear();
    m_lastByte = m_timers.now();
}

void EscapeWatch::receive(const QByteArray& bytes)
{
    const bool afterSilence = m_timers.now() - m_lastByte >= m_guard - roundingError;
    m_lastByte = m_timers.now();
    if (m_held.isEmpty() && !afterSilence) {
        m_outcome.pass(bytes);
        return;
    }
    m_held += bytes;
    m_timers.forgetAll();
    if (!pluses.startsWith(m_held)) {
        if (m_held.startsWith(pluses))
            m_outcome.spoilt();
        letGo();
    } else if (m_held == pluses) {
        m_timers.after(m_guard, [this] {
            m_held.clear();
            m_outcome.escape();
        });
    } else {
        m_timers.after(m_guard, [this] { letGo(); });
    }
}

void EscapeWatch::letGo()
{
    m_outcome.pass(std::exchange(m_held, {}));
}

} // namespace kalmo::handset
