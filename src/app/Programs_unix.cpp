// The parts of Programs that need Unix: limits and end of a process.

#include "app/Programs.h"

#include <QProcess>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace kalmo::app {

namespace {

template <typename Resource>
void limit(Resource resource, qint64 most)
{
    const rlimit both{static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
    if (most > 0)
        setrlimit(resource, &both);
}

} // namespace

void confine(QProcess& process, const ProgramCall& call)
{
    // Runs between fork and exec: system calls only.
    process.setChildProcessModifier([memory = call.mostMemory, file = call.largestFile] {
        limit(RLIMIT_AS, memory);
        limit(RLIMIT_FSIZE, file);
        setpgid(0, 0); // Ctrl-C in a terminal reaches only us, and we cancel in our own way
#ifdef __linux__
        prctl(PR_SET_PDEATHSIG, SIGKILL);
#endif
    });
}

void endNow(QProcess& process)
{
    const auto group = static_cast<pid_t>(process.processId());
    if (group > 0)
        kill(-group, SIGKILL);
    process.kill();
    process.waitForFinished();
}

} // namespace kalmo::app
