// The terminal on Unix.

#include "cli/Terminal.h"

#include <cerrno>
#include <clocale>

#include <langinfo.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace kalmo::cli {

namespace {

constexpr int defaultWidth = 80;
constexpr qsizetype longestLine = 4096;

} // namespace

bool isTerminal(Stream stream)
{
    return isatty(static_cast<int>(stream)) == 1;
}

int terminalWidth()
{
    winsize size{};
    const bool known = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : defaultWidth;
}

QByteArray localeEncoding()
{
    std::setlocale(LC_ALL, "");
    return nl_langinfo(CODESET);
}

int writeTo(Stream stream, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written = write(static_cast<int>(stream), bytes.constData() + done,
                                      static_cast<size_t>(bytes.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += written > 0 ? written : 0;
    }
    return 0;
}

bool isBrokenPipe(int error)
{
    return error == EPIPE;
}

std::optional<QString> readLine()
{
    QByteArray line;
    char byte = 0;
    while (line.size() < longestLine && read(STDIN_FILENO, &byte, 1) == 1) {
        if (byte == '\n')
            return QString::fromLocal8Bit(line);
        line.append(byte);
    }
    return std::nullopt;
}

} // namespace kalmo::cli
