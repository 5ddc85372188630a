// The pseudo terminal on Unix.

#include "handset/program/PseudoTerminal.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr int searchMilliseconds = 20;

struct Speed
{
    speed_t code;
    int baud;
};

constexpr Speed speeds[] = {
    {B300, 300},         {B600, 600},         {B1200, 1200},       {B1800, 1800},       {B2400, 2400},
    {B4800, 4800},       {B9600, 9600},       {B19200, 19200},     {B38400, 38400},     {B57600, 57600},
    {B115200, 115200},   {B230400, 230400},   {B460800, 460800},   {B500000, 500000},   {B576000, 576000},
    {B921600, 921600},   {B1000000, 1000000}, {B1152000, 1152000}, {B1500000, 1500000}, {B2000000, 2000000},
    {B2500000, 2500000}, {B3000000, 3000000}, {B3500000, 3500000}, {B4000000, 4000000},
};

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Nothing is echoed, translated or buffered, and the rate holds until the client sets its own.
bool makeRaw(int terminal, int baud)
{
    termios settings{};
    if (tcgetattr(terminal, &settings) != 0)
        return false;
    cfmakeraw(&settings);
    for (const Speed& speed : speeds) {
        if (speed.baud == baud)
            cfsetspeed(&settings, speed.code);
    }
    return tcsetattr(terminal, TCSANOW, &settings) == 0;
}

} // namespace

PseudoTerminal::PseudoTerminal()
{
    m_search.setInterval(searchMilliseconds);
    connect(&m_search, &QTimer::timeout, this, &PseudoTerminal::lookForClient);
}

PseudoTerminal::~PseudoTerminal()
{
    release();
}

bool PseudoTerminal::hasRate(int baud)
{
    return std::any_of(std::begin(speeds), std::end(speeds),
                       [baud](const Speed& speed) { return speed.baud == baud; });
}

bool PseudoTerminal::open(const QString& link, int baud, QString& error)
{
    m_link = link;
    m_firstBaud = baud;
    return make(error);
}

bool PseudoTerminal::make(QString& error)
{
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    std::array<char, 128> name{};
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0 ||
        ptsname_r(m_master, name.data(), name.size()) != 0 || !makeRaw(m_master, m_firstBaud)) {
        error = u"No pseudo terminal: "_s + systemError();
        return false;
    }
    m_path = QFile::decodeName(name.data());
    m_readable = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Read);
    connect(m_readable.get(), &QSocketNotifier::activated, this, &PseudoTerminal::readWaiting);
    m_writable = std::make_unique<QSocketNotifier>(m_master, QSocketNotifier::Write);
    m_writable->setEnabled(false);
    connect(m_writable.get(), &QSocketNotifier::activated, this, &PseudoTerminal::writeWaiting);
    return placeLink(error);
}

bool PseudoTerminal::placeLink(QString& error)
{
    if (m_link.isEmpty())
        return true;
    const QFileInfo there(m_link);
    if (there.exists() && !there.isSymLink()) {
        error = u"%1 exists and is no symbolic link."_s.arg(m_link);
        m_link.clear();
        return false;
    }
    const QByteArray link = QFile::encodeName(m_link);
    const QByteArray beside = link + ".new";
    unlink(beside.constData());
    if (symlink(QFile::encodeName(m_path).constData(), beside.constData()) == 0 &&
        rename(beside.constData(), link.constData()) == 0)
        return true;
    error = u"%1: %2"_s.arg(m_link, systemError());
    return false;
}

void PseudoTerminal::release()
{
    m_readable.reset();
    m_writable.reset();
    m_outgoing.clear();
    m_search.stop();
    if (m_master < 0)
        return;
    ::close(m_master);
    m_master = -1;
    // Another handset may own the link by now.
    if (!m_link.isEmpty() && QFile::symLinkTarget(m_link) == m_path)
        QFile::remove(m_link);
}

int PseudoTerminal::baudRate() const
{
    termios settings{};
    if (m_master < 0 || tcgetattr(m_master, &settings) != 0)
        return 0;
    for (const Speed& speed : speeds) {
        if (speed.code == cfgetospeed(&settings))
            return speed.baud;
    }
    return 0;
}

bool PseudoTerminal::hasClient() const
{
    pollfd state{m_master, POLLIN, 0};
    return poll(&state, 1, 0) >= 0 && (state.revents & POLLHUP) == 0;
}

void PseudoTerminal::readWaiting()
{
    std::array<char, 4096> buffer{};
    const ssize_t count = ::read(m_master, buffer.data(), buffer.size());
    if (count > 0)
        Q_EMIT received(QByteArray(buffer.data(), count));
    else if (count == 0 || (errno != EAGAIN && errno != EINTR))
        clientLeft();
}

void PseudoTerminal::write(const QByteArray& bytes)
{
    if (m_master < 0 || m_search.isActive())
        return;
    m_outgoing += bytes;
    writeWaiting();
}

void PseudoTerminal::writeWaiting()
{
    const ssize_t count = ::write(m_master, m_outgoing.constData(), static_cast<size_t>(m_outgoing.size()));
    if (count > 0)
        m_outgoing.remove(0, count);
    m_writable->setEnabled(!m_outgoing.isEmpty());
}

void PseudoTerminal::clientLeft()
{
    // Without a client the terminal is readable all the time, with nothing in it.
    m_readable->setEnabled(false);
    m_writable->setEnabled(false);
    m_outgoing.clear();
    if (freeFromLastClient()) {
        m_search.start();
    } else {
        // Not inside of the notifier that this destroys.
        QTimer::singleShot(0, this, [this] {
            release();
            remake();
        });
    }
    Q_EMIT closed();
}

/// A client that was killed while it held the terminal exclusively leaves it locked, with the bytes that it
/// did not read. Returns false if only a new terminal helps.
bool PseudoTerminal::freeFromLastClient()
{
    if (hasClient())
        return true;
    const int client =
        ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (client < 0)
        return errno != EBUSY || hasClient();
    ioctl(client, TIOCNXCL);
    tcflush(client, TCIOFLUSH);
    ::close(client);
    return true;
}

void PseudoTerminal::lookForClient()
{
    if (!hasClient())
        return;
    m_search.stop();
    m_readable->setEnabled(true);
}

void PseudoTerminal::hangUp(double seconds)
{
    release();
    QTimer::singleShot(static_cast<int>(seconds * 1000), this, &PseudoTerminal::remake);
}

void PseudoTerminal::remake()
{
    QString error;
    if (!make(error))
        Q_EMIT failed(error);
}

} // namespace kalmo::handset
