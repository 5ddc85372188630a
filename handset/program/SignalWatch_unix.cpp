// Signals on Unix.

#include "handset/program/SignalWatch.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kalmo::handset {

namespace {

constexpr int watched[] = {SIGTERM, SIGINT, SIGUSR1};

int signalPipe[2] = {-1, -1}; // a signal handler can reach only globals

void passOn(int number)
{
    const auto byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const ssize_t written = write(signalPipe[1], &byte, 1);
}

} // namespace

SignalWatch::SignalWatch()
{
    if (pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &SignalWatch::readSignal);
    struct sigaction action = {};
    action.sa_handler = passOn;
    action.sa_flags = SA_RESTART;
    for (const int number : watched)
        sigaction(number, &action, nullptr);
}

SignalWatch::~SignalWatch()
{
    for (const int number : watched)
        std::signal(number, SIG_DFL);
    m_notifier.reset();
    close(signalPipe[0]);
    close(signalPipe[1]);
}

void SignalWatch::readSignal()
{
    unsigned char number = 0;
    while (read(signalPipe[0], &number, 1) == 1) {
        if (number == SIGUSR1)
            Q_EMIT powerCycleAsked();
        else
            Q_EMIT endAsked();
    }
}

} // namespace kalmo::handset
