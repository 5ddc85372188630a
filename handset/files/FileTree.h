#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace kalmo::handset {

/// A file or a folder. Names are looked up without regard to case.
struct FileNode
{
    QString name = {};
    bool isFolder = false;
    QByteArray content = {};
    QDateTime modified = {};
    QString user = QStringLiteral("RWD"); ///< rights: of R, W and D those that there are
    QString group = QStringLiteral("RWD");
    std::vector<std::unique_ptr<FileNode>> children = {};
    bool holdsItself = false; ///< a folder that is among its own children, for a fault

    FileNode* child(const QString& childName);
    bool canRead() const { return user.contains(u'R'); }
    bool canDelete() const { return user.contains(u'D'); }
    bool canWrite() const { return user.contains(u'W'); }
    /// Bytes of all files in it.
    qint64 size() const;
};

/// Result of a change.
enum class FileResult { Done, NotFound, Refused, NotEmpty, Exists, Full };

/// The handset's file system. A path is the list of the names on the way from the root.
class FileTree
{
public:
    explicit FileTree(qint64 capacity = 0) : m_capacity(capacity) { m_root.isFolder = true; }

    const FileNode& root() const { return m_root; }
    qint64 capacity() const { return m_capacity; } ///< bytes
    qint64 free() const { return std::max<qint64>(m_capacity - m_root.size(), 0); }

    /// Null if there is none; the root for an empty path.
    FileNode* find(const QStringList& path);

    /// Makes a folder and all above it. An existing one is a success.
    FileResult makeFolder(const QStringList& path, const QDateTime& now);
    /// Makes a file, or replaces one that may be written.
    FileResult put(const QStringList& path, const QByteArray& content, const QDateTime& modified);
    FileResult remove(const QStringList& path);
    FileResult move(const QStringList& from, const QStringList& to);
    FileResult setRights(const QStringList& path, const QString& user, const QString& group);

    /// Returns true for a name that a folder may have. Names from outside may have any.
    static bool isGoodName(const QString& name);
    /// Puts a node of any name into a folder, for a memory or a fault.
    static FileNode& add(FileNode& folder, FileNode node);

private:
    FileNode m_root;
    qint64 m_capacity;
};

} // namespace kalmo::handset
