#pragma once

#include "app/Context.h"

#include <QLockFile>

#include <memory>

namespace kalmo::app {

/// A folder for the work files of one run, below "config/temp", so that two programs don't meet. The
/// destructor deletes it. A folder that a killed program left there is deleted when the next one is made, or
/// by `sweep`.
class WorkFolder
{
public:
    explicit WorkFolder(Context& context);
    ~WorkFolder();
    Q_DISABLE_COPY_MOVE(WorkFolder)

    /// Returns false if none could be made, for want of room or rights.
    bool isValid() const { return m_lock != nullptr; }
    QString path() const { return m_path; }
    QString filePath(const QString& name) const { return m_path + u'/' + name; }

    /// Deletes the folders of programs that have ended.
    static void sweep(const Context& context);

private:
    QString m_path;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace kalmo::app
