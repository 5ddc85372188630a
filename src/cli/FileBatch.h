#pragma once

#include "cli/Job.h"

#include <QJsonArray>

namespace kalmo::cli {

/// Results of several files that are transferred one after the other. After a failure the rest is tried all
/// the same.
class FileBatch
{
public:
    explicit FileBatch(Job& job) : m_job(job) {}

    /// Keeps a file's result, and tells of the file.
    void done(const QJsonObject& result, const QString& note);
    void failed(const QJsonObject& result, ExitStatus status, const QString& error);

    /// Shows the results. The worst status of all.
    ExitStatus finish();

private:
    Job& m_job;
    QJsonArray m_results;
    ExitStatus m_worst = ExitDone;
};

} // namespace kalmo::cli
