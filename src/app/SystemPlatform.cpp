#include "app/SystemPlatform.h"

#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QOperatingSystemVersion>
#include <QSettings>
#include <QStandardPaths>

namespace kalmo::app {

using namespace Qt::StringLiterals;

namespace {

QSettings perUserValues()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, u"Merrow Works"_s, u"Kalmo"_s);
}

const QString storagePathName = u"StoragePath"_s;

} // namespace

SystemPlatform::SystemPlatform() = default;
SystemPlatform::~SystemPlatform() = default;

QString SystemPlatform::ExePath() const
{
    return QCoreApplication::applicationDirPath();
}

QString SystemPlatform::SpecialFolder(Folder id, bool create) const
{
    QStandardPaths::StandardLocation location = QStandardPaths::DocumentsLocation;
    if (id == Folder::Desktop)
        location = QStandardPaths::DesktopLocation;
    else if (id == Folder::LocalAppData)
        location = QStandardPaths::GenericDataLocation;
    const QString path = QStandardPaths::writableLocation(location);
    if (create && !path.isEmpty())
        QDir().mkpath(path);
    return path;
}

QString SystemPlatform::storagePathValue() const
{
    return perUserValues().value(storagePathName).toString();
}

int SystemPlatform::setStoragePathValue(const QString& value)
{
    QSettings values = perUserValues();
    values.setValue(storagePathName, value);
    values.sync();
    return values.status();
}

bool SystemPlatform::claimSingleInstance()
{
    if (m_instance)
        return true;
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    auto lock = std::make_unique<QLockFile>(QDir(folder).filePath(u"kalmo-instance.lock"_s));
    lock->setStaleLockTime(0); // the lock is held for hours; it is stale only if its owner is dead
    if (!lock->tryLock() && lock->error() == QLockFile::LockFailedError)
        return false;
    m_instance = std::move(lock);
    return true;
}

} // namespace kalmo::app
