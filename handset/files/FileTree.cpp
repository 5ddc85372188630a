#include "handset/files/FileTree.h"

#include <algorithm>
#include <numeric>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestFileName = 120;

QStringList folderOf(const QStringList& path)
{
    return path.first(path.size() - 1);
}

std::unique_ptr<FileNode> takeOut(FileNode& folder, const QString& name)
{
    const auto found = std::find_if(folder.children.begin(), folder.children.end(), [&](const auto& node) {
        return node->name.compare(name, Qt::CaseInsensitive) == 0;
    });
    auto node = std::move(*found);
    folder.children.erase(found);
    return node;
}

} // namespace

FileNode* FileNode::child(const QString& childName)
{
    for (const auto& node : children) {
        if (node->name.compare(childName, Qt::CaseInsensitive) == 0)
            return node.get();
    }
    return holdsItself && name.compare(childName, Qt::CaseInsensitive) == 0 ? this : nullptr;
}

qint64 FileNode::size() const
{
    return std::accumulate(children.begin(), children.end(), static_cast<qint64>(content.size()),
                           [](qint64 sum, const auto& node) { return sum + node->size(); });
}

bool FileTree::isGoodName(const QString& name)
{
    const bool clean = std::all_of(name.begin(), name.end(), [](QChar character) {
        return character.unicode() >= u' ' && !u"\\/:*?\"<>|"_s.contains(character);
    });
    return clean && !name.isEmpty() && name.size() <= longestFileName && name != u"."_s && name != u".."_s;
}

FileNode& FileTree::add(FileNode& folder, FileNode node)
{
    folder.children.push_back(std::make_unique<FileNode>(std::move(node)));
    return *folder.children.back();
}

FileNode* FileTree::find(const QStringList& path)
{
    FileNode* node = &m_root;
    for (const QString& name : path) {
        node = node->child(name);
        if (!node)
            return nullptr;
    }
    return node;
}

FileResult FileTree::makeFolder(const QStringList& path, const QDateTime& now)
{
    FileNode* node = &m_root;
    for (const QString& name : path) {
        FileNode* next = node->child(name);
        if (next && !next->isFolder)
            return FileResult::Exists;
        if (!next && !isGoodName(name))
            return FileResult::Refused;
        node = next ? next : &add(*node, {.name = name, .isFolder = true, .modified = now});
    }
    return FileResult::Done;
}

FileResult FileTree::put(const QStringList& path, const QByteArray& content, const QDateTime& modified)
{
    FileNode* folder = path.isEmpty() ? nullptr : find(folderOf(path));
    if (!folder || !folder->isFolder)
        return FileResult::NotFound;
    FileNode* node = folder->child(path.last());
    if (node ? node->isFolder || !node->canWrite() : !isGoodName(path.last()))
        return FileResult::Refused;
    if (content.size() - (node ? node->content.size() : 0) > free())
        return FileResult::Full;
    if (!node)
        node = &add(*folder, {.name = path.last()});
    node->content = content;
    node->modified = modified;
    return FileResult::Done;
}

FileResult FileTree::remove(const QStringList& path)
{
    const FileNode* node = path.isEmpty() ? nullptr : find(path);
    if (!node)
        return FileResult::NotFound;
    if (!node->canDelete())
        return FileResult::Refused;
    if (!node->children.empty())
        return FileResult::NotEmpty;
    takeOut(*find(folderOf(path)), path.last());
    return FileResult::Done;
}

FileResult FileTree::move(const QStringList& from, const QStringList& to)
{
    FileNode* node = from.isEmpty() ? nullptr : find(from);
    FileNode* target = to.isEmpty() ? nullptr : find(folderOf(to));
    if (!node || !target || !target->isFolder)
        return FileResult::NotFound;
    const FileNode* there = target->child(to.last());
    if (there && there != node)
        return FileResult::Exists;
    const bool intoItself = to.size() > from.size() && find(to.first(from.size())) == node;
    if (intoItself || !node->canWrite() || !isGoodName(to.last()))
        return FileResult::Refused;
    auto moved = takeOut(*find(folderOf(from)), from.last());
    moved->name = to.last();
    target->children.push_back(std::move(moved));
    return FileResult::Done;
}

FileResult FileTree::setRights(const QStringList& path, const QString& user, const QString& group)
{
    FileNode* node = path.isEmpty() ? nullptr : find(path);
    if (!node)
        return FileResult::NotFound;
    node->user = user;
    node->group = group;
    return FileResult::Done;
}

} // namespace kalmo::handset
