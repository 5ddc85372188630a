#include "support/TestContext.h"

#include <QDir>
#include <QFile>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

TestContext::TestContext()
    : storage(folder.filePath(u"storage"_s)), dialogs(verdict), platform(folder.path()), settings(sy),
      log(sy, clock, folder.path()), context{sy, clock, dialogs, ending, platform, settings, log}
{
    QDir().mkpath(storage + u"/config/temp"_s);
    sy.Paths.Exe = platform.exePath;
    sy.Paths.Storage = storage;
    sy.DefUserExpRoot = platform.documents;
}

QString TestContext::makeFile(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return file.fileName();
}

QByteArray TestContext::contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void TestContext::startLog()
{
    sy.debug = true;
    sy.logPath = path(u"debug.log"_s);
}

QStringList TestContext::logged() const
{
    QStringList lines;
    for (const QString& line : QString::fromUtf8(contentOf(sy.logPath)).split(u'\n', Qt::SkipEmptyParts))
        lines.append(line.sliced(line.indexOf(u": "_s) + 2).trimmed().replace(u":\t"_s, u": "_s));
    return lines;
}

} // namespace kalmo::tests
