#include "media/SourceFile.h"

#include "app/Files.h"

#include <QFile>

namespace kalmo::media {

std::optional<Failure> checkSource(const QString& path)
{
    if (!app::FileExists(path))
        return Failure{Fault::NoSource, path};
    QFile file(path);
    char first = 0;
    if (!file.open(QIODevice::ReadOnly) || file.read(&first, 1) < 0)
        return Failure{Fault::NotReadable, path, {}, file.errorString()};
    return {};
}

} // namespace kalmo::media
