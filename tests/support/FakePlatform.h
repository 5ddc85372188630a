#pragma once

#include "app/Platform.h"

namespace kalmo::tests {

/// An operating system in memory; its folders lie under a temporary one.
class FakePlatform : public app::Platform
{
public:
    explicit FakePlatform(const QString& root)
        : exePath(root + QStringLiteral("/program")), documents(root + QStringLiteral("/documents")),
          desktop(root + QStringLiteral("/desktop")), localAppData(root + QStringLiteral("/data"))
    {
    }

    QString exePath;
    QString documents;
    QString desktop;
    QString localAppData;
    app::OsVersion version{6, 1, 0, 0};
    QString storagePath;       ///< the value of the registry
    int storagePathResult = 0; ///< result of setting it; other than 0 leaves the value alone
    bool alone = true;         ///< true if this is the only instance

    QString ExePath() const override { return exePath; }
    app::OsVersion osVersion() const override { return version; }
    bool hasClassicVersionNumbers() const override { return false; }
    QString SpecialFolder(app::Folder id, bool create) const override;
    QString storagePathValue() const override { return storagePath; }
    int setStoragePathValue(const QString& value) override;
    bool claimSingleInstance() override { return alone; }
};

} // namespace kalmo::tests
