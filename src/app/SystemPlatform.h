#pragma once

#include "app/Platform.h"
#include "app/Sy.h"

#include <memory>

class QLockFile;

namespace kalmo::app {

/// The operating system that the program runs on. The value `StoragePath` is in the user's native settings.
class SystemPlatform final : public Platform
{
public:
    SystemPlatform();
    ~SystemPlatform() override;

    QString ExePath() const override;
    OsVersion osVersion() const override;
    bool hasClassicVersionNumbers() const override;
    QString SpecialFolder(Folder id, bool create) const override;
    QString storagePathValue() const override;
    int setStoragePathValue(const QString& value) override;
    bool claimSingleInstance() override;

private:
    std::unique_ptr<QLockFile> m_instance;
};

/// Opens files through the user's desktop, in the storage folder of the session, which outlives this.
class SystemDesktop final : public Desktop
{
public:
    explicit SystemDesktop(const Sy& sy) : m_sy(sy) {}

    bool hasAssociation(const QString& path) const override;
    bool open(const QString& path) override;
    bool openWith(const QString& program, const QString& path) override;
    bool openUrl(const QUrl& url) override;

private:
    const Sy& m_sy;
};

} // namespace kalmo::app
