#include "ui/EndSignals.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace kalmo::ui {

namespace {

constexpr int endSignals[] = {SIGINT, SIGTERM, SIGHUP};

// All that a handler may touch.
volatile std::sig_atomic_t writeEnd = -1;
volatile std::sig_atomic_t isCaught[SIGTERM + 1] = {};

void onEndSignal(int)
{
    const int before = errno;
    for (const int signal : endSignals) {
        if (isCaught[signal])
            std::signal(signal, SIG_DFL);
    }
    [[maybe_unused]] const auto written = write(writeEnd, "", 1);
    errno = before;
}

} // namespace

EndSignals::EndSignals()
{
    if (pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals end the program as ever
    writeEnd = m_pipe[1];
    m_notifier = std::make_unique<QSocketNotifier>(m_pipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        Q_EMIT received();
    });
    struct sigaction action = {};
    action.sa_handler = onEndSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : endSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        isCaught[signal] = before.sa_handler != SIG_IGN; // as nohup wants it
        if (isCaught[signal])
            sigaction(signal, &action, nullptr);
    }
}

EndSignals::~EndSignals()
{
    if (!m_notifier)
        return;
    for (const int signal : endSignals) {
        if (isCaught[signal])
            std::signal(signal, SIG_DFL);
    }
    for (const int end : m_pipe)
        close(end);
}

} // namespace kalmo::ui
