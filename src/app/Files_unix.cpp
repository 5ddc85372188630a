// The part of Files.h that needs the operating system itself.

#include "app/Files.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

namespace kalmo::app {

void syncFolder(const QString& path)
{
    const int folder = open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return;
    fsync(folder);
    close(folder);
}

} // namespace kalmo::app
