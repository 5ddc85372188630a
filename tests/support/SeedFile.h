#pragma once

#include <QFile>
#include <QTemporaryDir>

namespace kalmo::tests {

/// Path of a file with the memory that an emulated handset starts with. It stays until the program ends.
inline QString seedFile(const QByteArray& json)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QString::number(qHash(json))));
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(json);
    return file.fileName();
}

} // namespace kalmo::tests
