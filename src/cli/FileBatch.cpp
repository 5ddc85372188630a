#include "cli/FileBatch.h"

#include "cli/DataWork.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

void FileBatch::done(const QJsonObject& result, const QString& note)
{
    m_results.append(result);
    m_job.out.note(note + u".\n"_s);
}

void FileBatch::failed(const QJsonObject& result, ExitStatus status, const QString& error)
{
    m_results.append(result);
    m_worst = std::max(m_worst, status);
    m_job.out.error(error + u'.');
}

ExitStatus FileBatch::finish()
{
    if (m_job.stop.Checked())
        m_worst = std::max(m_worst, brokenOff(m_job));
    m_job.progress.clear();
    m_job.out.show(m_results, {});
    return m_worst;
}

} // namespace kalmo::cli
