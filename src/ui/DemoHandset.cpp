#include "ui/DemoHandset.h"

#include <QDir>
#include <QFile>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

const QString model = u"SL450HX"_s;
constexpr int longestStart = 5000; // milliseconds
constexpr int longestEnd = 2000;

} // namespace

DemoHandset::~DemoHandset()
{
    stop();
}

void DemoHandset::stop()
{
    if (!isRunning())
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(longestEnd))
        m_process.kill();
    m_process.waitForFinished(longestEnd);
}

bool DemoHandset::start(const QString& programFolder, const QString& link, QString& error)
{
    if (isRunning())
        return true;
    QFile::remove(link);
    m_process.setStandardInputFile(QProcess::nullDevice());
    m_process.start(QDir(programFolder).filePath(u"kalmo-handset"_s),
                    {u"--model"_s, model, u"--link"_s, link});
    // It prints the path of its terminal as soon as that is there.
    if (m_process.waitForStarted(longestStart) && m_process.waitForReadyRead(longestStart)) {
        m_process.closeReadChannel(QProcess::StandardError);
        return true;
    }
    const bool isMissing = m_process.error() == QProcess::FailedToStart;
    m_process.kill();
    m_process.waitForFinished(longestEnd);
    const QString said = QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed();
    error = isMissing        ? u"Das Programm \"kalmo-handset\" fehlt oder lässt sich nicht ausführen."_s
            : said.isEmpty() ? u"Es meldet sich nicht."_s
                             : said.section(u'\n', -1);
    return false;
}

} // namespace kalmo::ui
