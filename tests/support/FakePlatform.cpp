#include "support/FakePlatform.h"

#include <QDir>

namespace kalmo::tests {

QString FakePlatform::SpecialFolder(app::Folder id, bool create) const
{
    const QString path = id == app::Folder::Documents ? documents
                         : id == app::Folder::Desktop ? desktop
                                                      : localAppData;
    if (create && !path.isEmpty())
        QDir().mkpath(path);
    return path;
}

int FakePlatform::setStoragePathValue(const QString& value)
{
    if (storagePathResult == 0)
        storagePath = value;
    return storagePathResult;
}

} // namespace kalmo::tests
