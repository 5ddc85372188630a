#include "app/WorkFolder.h"

#include "app/StoragePaths.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 youngest = 60; // seconds in which a folder without a lock may still get one

std::unique_ptr<QLockFile> lockOf(const QString& folder)
{
    auto lock = std::make_unique<QLockFile>(folder + u"/owner.lock"_s);
    lock->setStaleLockTime(0); // it is stale only if its owner is dead
    return lock;
}

} // namespace

WorkFolder::WorkFolder(Context& context)
{
    sweep(context);
    QDir().mkpath(workPath(context.sy));
    QTemporaryDir folder(workPath(context.sy) + u"/work-XXXXXX"_s);
    if (!folder.isValid())
        return;
    auto lock = lockOf(folder.path());
    if (!lock->tryLock())
        return;
    folder.setAutoRemove(false);
    m_path = folder.path();
    m_lock = std::move(lock);
}

WorkFolder::~WorkFolder()
{
    if (!m_lock)
        return;
    m_lock->unlock();
    QDir(m_path).removeRecursively();
}

void WorkFolder::sweep(const Context& context)
{
    const auto folders = QDir(workPath(context.sy)).entryInfoList({u"work-*"_s}, QDir::Dirs);
    for (const QFileInfo& info : folders) {
        const bool isLocked = QFileInfo::exists(info.filePath() + u"/owner.lock"_s);
        if (!isLocked && info.lastModified().secsTo(QDateTime::currentDateTime()) < youngest)
            continue;
        const auto lock = lockOf(info.filePath());
        if (lock->tryLock()) {
            lock->unlock();
            QDir(info.filePath()).removeRecursively();
        }
    }
}

} // namespace kalmo::app
