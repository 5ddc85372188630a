#pragma once

#include "app/Context.h"

#include <QLockFile>

#include <memory>

namespace kalmo::app {

/// A folder for the work files of one run, below "config/temp", so that two programs don't meet. It goes with
/// this object. One that a killed program left behind goes when the next is made, or by `sweep`.
class WorkFolder
{
public:
    explicit WorkFolder(Context& context);
    ~WorkFolder();
    Q_DISABLE_COPY_MOVE(WorkFolder)

    /// False where none could be made, for want of room or rights.
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
