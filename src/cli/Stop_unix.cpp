// Signals that ask for a stop, on Unix.

#include "cli/Command.h"
#include "cli/Stop.h"
#include "cli/Terminal.h"

#include <cerrno>
#include <csignal>

#include <unistd.h>

namespace kalmo::cli {

namespace {

// A handler may touch nothing but these.
volatile std::sig_atomic_t stopRequests = 0;
volatile std::sig_atomic_t openStores = 0;
bool someoneSeesIt = false;

constexpr char stopping[] =
    "\nkalmoctl: stopping as soon as what is open in the phone can be closed; a phone that "
    "is silent delays that.\n";

void onStopSignal(int)
{
    stopRequests = stopRequests + 1;
    if (stopRequests == 1 && openStores > 0 && someoneSeesIt) {
        const int before = errno;
        [[maybe_unused]] const auto written = write(STDERR_FILENO, stopping, sizeof stopping - 1);
        errno = before;
    }
    if (stopRequests > 1 && openStores == 0)
        _exit(ExitRefused);
}

} // namespace

void catchStopSignals()
{
    someoneSeesIt = isTerminal(Stream::Err);
    struct sigaction action = {};
    action.sa_handler = onStopSignal; // without SA_RESTART: a prompt that waits for an answer gives up
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

bool StopBox::Checked() const
{
    return stopRequests > 0;
}

StoreOpenScope::StoreOpenScope()
{
    openStores = openStores + 1;
}

StoreOpenScope::~StoreOpenScope()
{
    openStores = openStores - 1;
}

} // namespace kalmo::cli
