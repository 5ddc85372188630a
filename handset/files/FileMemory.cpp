#include "handset/files/FileMemory.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QJsonObject>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

const QString timeForm = u"yyyy-MM-dd hh:mm:ss"_s;
const QString filesFolder = u"files"_s;
constexpr qsizetype longestStored = 100; // bytes of a name on disk

QString storedName(const QString& name)
{
    const QByteArray bytes = name.toUtf8();
    if (bytes.isEmpty())
        return u"%"_s; // of no other name
    if (FileTree::isGoodName(name) && !name.startsWith(u'.') && !name.contains(u'%') &&
        bytes.size() <= longestStored)
        return name;
    const QByteArray encoded = bytes.toPercentEncoding({}, ".");
    if (encoded.size() <= longestStored)
        return QString::fromLatin1(encoded);
    const QByteArray mark = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex().left(12);
    return QString::fromLatin1(encoded.left(longestStored - 13) + '-' + mark);
}

std::optional<QByteArray> contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? std::optional(file.readAll()) : std::nullopt;
}

/// Gives nothing for a file that is no longer there.
std::optional<FileNode> nodeFrom(const QJsonObject& row, const QString& base)
{
    FileNode node{.name = row[u"name"_s].toString(),
                  .isFolder = row[u"folder"_s].toBool(),
                  .modified = QDateTime::fromString(row[u"modified"_s].toString(), timeForm),
                  .user = row[u"user"_s].toString(u"RWD"_s),
                  .group = row[u"group"_s].toString(u"RWD"_s)};
    if (node.isFolder)
        return node;
    const auto content = contentOf(base + u'/' + row[u"source"_s].toString());
    node.content = content.value_or(QByteArray());
    return content ? std::optional(std::move(node)) : std::nullopt;
}

QJsonObject rowFrom(const FileNode& node, const QStringList& folder, const QString& source)
{
    QJsonObject row{{u"in"_s, QJsonArray::fromStringList(folder)},
                    {u"name"_s, node.name},
                    {u"modified"_s, node.modified.toString(timeForm)},
                    {u"user"_s, node.user},
                    {u"group"_s, node.group}};
    if (node.isFolder)
        row[u"folder"_s] = true;
    else
        row[u"source"_s] = source;
    return row;
}

struct Snapshot
{
    QJsonArray rows;
    QHash<QString, QByteArray> contents;
};

void collect(const FileNode& folder, const QStringList& path, Snapshot& snapshot)
{
    for (const auto& node : folder.children) {
        const QStringList nodePath = path + QStringList{node->name};
        const QString stored = storedPath(nodePath);
        snapshot.rows.append(rowFrom(*node, path, stored));
        if (node->isFolder)
            collect(*node, nodePath, snapshot);
        else
            snapshot.contents.insert(stored, node->content);
    }
}

QStringList toList(const QJsonArray& names)
{
    QStringList list;
    for (const auto& name : names)
        list.append(name.toString());
    return list;
}

} // namespace

QString storedPath(const QStringList& path)
{
    QString stored = filesFolder;
    for (const QString& name : path)
        stored += u'/' + storedName(name);
    return stored;
}

void FileMemory::load(FileTree& tree, const QJsonArray& rows, const QString& base, const StateFolder& memory)
{
    for (const auto& value : rows) {
        const QJsonObject row = value.toObject();
        FileNode* folder = tree.find(toList(row[u"in"_s].toArray()));
        auto node = nodeFrom(row, base);
        if (node && folder && folder->isFolder)
            FileTree::add(*folder, std::move(*node));
    }
    if (!memory.path().isEmpty())
        takeIn(tree, memory.path());
}

void FileMemory::takeIn(FileTree& tree, const QString& folder)
{
    Snapshot known;
    collect(tree.root(), {}, known);
    const QDir top(folder);
    QDirIterator files(folder + u'/' + filesFolder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString stored = top.relativeFilePath(files.next());
        const QByteArray content = contentOf(files.filePath()).value_or(QByteArray());
        m_onDisk.insert(stored, content);
        if (known.contents.contains(stored))
            continue;
        const QStringList path = stored.split(u'/').sliced(1);
        const QDateTime modified = files.fileInfo().lastModified();
        tree.makeFolder(path.first(path.size() - 1), modified);
        tree.put(path, content, modified);
    }
}

void FileMemory::save(const FileTree& tree, StateFolder& memory)
{
    if (memory.path().isEmpty())
        return;
    Snapshot now;
    collect(tree.root(), {}, now);
    for (auto file = now.contents.cbegin(); file != now.contents.cend(); ++file) {
        const auto before = m_onDisk.constFind(file.key());
        if (before == m_onDisk.cend() || *before != *file)
            memory.saveFile(file.key(), *file);
    }
    memory.save(u"files"_s, now.rows);
    for (auto file = m_onDisk.cbegin(); file != m_onDisk.cend(); ++file) {
        if (!now.contents.contains(file.key()))
            memory.removeFile(file.key());
    }
    m_onDisk = now.contents;
}

} // namespace kalmo::handset
