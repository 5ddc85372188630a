#include "support/RunningHandset.h"

#include <QCoreApplication>
#include <QFile>

#include <csignal>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

QString handsetProgram()
{
    return QCoreApplication::applicationDirPath() + u"/../bin/kalmo-handset"_s;
}

RunningHandset::RunningHandset(const QStringList& arguments)
{
    link = m_folder.filePath(u"line"_s);
    m_process.start(handsetProgram(),
                    QStringList{u"--link"_s, link, u"--state"_s, filePath(u"state"_s)} + arguments);
    if (m_process.waitForReadyRead(patience))
        path = QString::fromLatin1(m_process.readLine()).trimmed();
}

std::pair<int, QString> RunningHandset::end(bool ask)
{
    if (ask)
        m_process.terminate();
    m_process.waitForFinished(patience);
    return {m_process.exitCode(), QString::fromUtf8(m_process.readAllStandardError())};
}

void RunningHandset::powerCycle()
{
    kill(static_cast<pid_t>(m_process.processId()), SIGUSR1);
}

int RunningHandset::processorTime() const
{
    QFile file(u"/proc/%1/stat"_s.arg(m_process.processId()));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArrayList fields = file.readAll().split(' ');
    return fields.value(13).toInt() + fields.value(14).toInt();
}

} // namespace kalmo::tests
