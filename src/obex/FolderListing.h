#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QStringList>

namespace kalmo::obex {

enum class EntryKind { Folder = 1, File = 2 };

/// Bits of a permission.
enum Permission : int { MayRead = 1, MayDelete = 2, MayWrite = 4 };

/// Returns true if so many bytes can be all of a file that the phone lists with `listed` bytes. 0 may mean
/// that the phone reports no sizes.
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
    qint32 size = 0;    ///< bytes; files only; 0 also if the phone reports none
    QDateTime modified; ///< by the phone's clock; invalid if its form is not the usual one
    int userPerm = 0;   ///< sum of Permission
    int groupPerm = 0;

    bool isFile() const { return kind == EntryKind::File; }
};

/// The phone's root as its paths show it. It never goes over the wire.
QString rootPath();

/// Path of something in a folder. Each doubled backslash is reduced to one.
QString pathIn(const QString& folder, const QString& name);
/// A path without the root at its start. Case does not matter.
QString withoutRoot(const QString& path);

/// Item of a filter that lets folders through. It has to be the first.
inline constexpr QStringView addFolders = u"$ADD_FOLDER";

/// Returns true if a file's name ends in one of the endings. Case does not matter.
bool endsInOneOf(const QString& name, const QStringList& endings);

/// Parses a listing of the folder `folder`, decoded as UFT8Dec does it. This is no XML parser: it knows a
/// line by "folder name=" or "file name=", and an attribute by its name. Names are given as the phone takes
/// them in requests: "&amp;" and other entities are decoded. The folder "telecom" of the root is left out.
/// With a `filter` only files that end in one of its items are taken, and folders only if `addFolders` is
/// true.
QList<tObxDirEntry> parseFolderListing(const QString& listing, const QString& folder,
                                       const QStringList* filter = nullptr);

} // namespace kalmo::obex
