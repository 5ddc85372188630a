#pragma once

#include "handset/files/FileTree.h"
#include "handset/state/StateFolder.h"

#include <QHash>
#include <QJsonArray>

namespace kalmo::handset {

/// Keeps a file tree on disk: each file as a file below "files/" in the memory's folder, under a name that is
/// safe there, and the section "files" with names, rights and times.
class FileMemory
{
public:
    /// Fills the tree. `rows` is the section, `base` the folder that its "source" entries are relative to.
    /// Files below "files/" that are in no row are added too.
    void load(FileTree& tree, const QJsonArray& rows, const QString& base, const StateFolder& memory);

    /// Brings the disk up to date. Files that have not changed are not written again.
    void save(const FileTree& tree, StateFolder& memory);

private:
    void takeIn(FileTree& tree, const QString& folder);

    QHash<QString, QByteArray> m_onDisk; // content by path below the memory's folder
};

/// Path of a file below the memory's folder. Every component is a plain name on every system.
QString storedPath(const QStringList& path);

} // namespace kalmo::handset
