#pragma once

#include <QtGlobal>

#include <csignal>

#include <sys/resource.h>

namespace kalmo::tests {

/// While one lives no file grows beyond so many bytes: a write fails as it does on a full disk.
class SmallDisk
{
public:
    explicit SmallDisk(int room)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit little{static_cast<rlim_t>(room), m_before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN); // its default action ends the process
        setrlimit(RLIMIT_FSIZE, &little);
    }
    ~SmallDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

private:
    rlimit m_before = {};
};

} // namespace kalmo::tests
