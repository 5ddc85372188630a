// The parts of SystemPlatform that need Unix.

#include "app/SystemPlatform.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>

#include <sys/utsname.h>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestQuestion = 1500; // milliseconds for all of it: the window is frozen meanwhile

QString outputOf(const QString& program, const QStringList& arguments, const QDeadlineTimer& end)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(static_cast<int>(end.remainingTime())))
        return {};
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

} // namespace

OsVersion SystemPlatform::osVersion() const
{
    utsname system{};
    if (uname(&system) != 0)
        return {};
    const QStringList parts = QString::fromLatin1(system.release).split(QLatin1Char('.'));
    const auto number = [&](int index) {
        const QString digits = parts.value(index).section(QLatin1Char('-'), 0, 0);
        return digits.toInt();
    };
    return {number(0), number(1), number(2), 0};
}

bool SystemPlatform::hasClassicVersionNumbers() const
{
    return false;
}

bool SystemDesktop::hasAssociation(const QString& path) const
{
    const QDeadlineTimer end(longestQuestion);
    const QString type = outputOf(u"xdg-mime"_s, {u"query"_s, u"filetype"_s, path}, end);
    return !type.isEmpty() && !outputOf(u"xdg-mime"_s, {u"query"_s, u"default"_s, type}, end).isEmpty();
}

bool SystemDesktop::open(const QString& path)
{
    return QProcess::startDetached(u"xdg-open"_s, {path}, m_sy.Paths.Storage);
}

bool SystemDesktop::openWith(const QString& program, const QString& path)
{
    return QProcess::startDetached(program, {path}, QFileInfo(path).path());
}

bool SystemDesktop::openUrl(const QUrl& url)
{
    return QProcess::startDetached(u"xdg-open"_s, {url.toString(QUrl::FullyEncoded)});
}

} // namespace kalmo::app
