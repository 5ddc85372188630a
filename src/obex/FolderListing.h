#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace kalmo::obex {

enum class EntryKind { Folder = 1, File = 2 };

/// Bits of a permission.
enum Permission : int { MayRead = 1, MayDelete = 2, MayWrite = 4 };

/// Whether so many bytes can be all of a file that is listed with `listed` of them; 0 may mean that the phone
/// says nothing of sizes.
constexpr bool isWhole(qsizetype bytes, qint64 listed)
{
    return listed == 0 || bytes == listed;
}

/// One folder or file of the phone.
struct tObxDirEntry
{
    EntryKind kind = EntryKind::Folder;
    QString name;
    QString path;       ///< "Mobile:\folder\name"
    qint32 size = 0;    ///< bytes; files only; 0 also where the phone says nothing of it
    QDateTime modified; ///< what the phone's clock showed; invalid where it gave no date of the usual form
    int userPerm = 0;   ///< sum of Permission
    int groupPerm = 0;

    bool isFile() const { return kind == EntryKind::File; }
};

/// The phone's root as its paths show it. It never goes over the wire.
QString rootPath();

/// Path of something in a folder, each doubled backslash reduced to one.
QString pathIn(const QString& folder, const QString& name);
/// A path without the root at its start, in whatever case.
QString withoutRoot(const QString& path);

/// Item of a filter that lets folders through; it has to be the first.
inline constexpr QStringView addFolders = u"$ADD_FOLDER";

/// Whether a file's name ends, in whatever case, in one of the endings.
bool endsInOneOf(const QString& name, const QStringList& endings);

/// Reads a listing, decoded as UFT8Dec does it, of the folder `folder`. This is no XML parser: a line is
/// known by "folder name=" or "file name=", an attribute by its name. A name is given as the phone takes it
/// in requests: "&amp;" and its like are undone. The folder "telecom" of the root is left out. With a
/// `filter` only files that end in one of its items are taken, and folders only as `addFolders` says.
QList<tObxDirEntry> parseFolderListing(const QString& listing, const QString& folder,
                                       const QStringList* filter = nullptr);

} // namespace kalmo::obex
