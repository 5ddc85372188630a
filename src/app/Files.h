#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Returns true if the path names a file. "", "." and ".." never do.
bool FileExists(const QString& path);

/// Returns true if the path names a folder. "", "." and ".." never do.
bool DirExists(const QString& path);

/// Deletes a file, a read-only one too. Reports no error.
void DeleteQuiet(const QString& path);

/// Deletes a file, a read-only one too, and lets the user try again if that fails. Returns true if the file
/// is gone. Part of the described interface.
bool KillEx(Context& context, const QString& path);

/// Gives a file another name within its folder. Returns false if it keeps its name, for example because the
/// other one is taken.
bool moveFile(const QString& from, const QString& to);

/// Moves a file to a free name beside it and lets the user try again if that fails, as KillEx does. Returns
/// its new path, empty if it was not moved.
QString moveAside(Context& context, const QString& path);

/// Deletes every file in a folder and reports no error. Folders within it stay.
void emptyFolder(const QString& path);

/// Size of the shortest path that a folder to store in may have: a drive root is none.
inline constexpr qsizetype shortestFolder = 4;

/// Makes a folder and all above it. Paths below `shortestFolder` are refused. Shows and logs a failure.
bool EnsureDirExists(Context& context, const QString& path);

/// Does the same, but only logs a failure.
bool EnsureDirExistsNoMsgBox(Context& context, const QString& path);

/// Writes a probe file into the folder and deletes it again. Shows a failure.
bool WriteTest(Context& context, const QString& folder);

/// Writes the whole file or nothing: the old content stays until the new one is safely on disk. Returns false
/// and puts the system's reason into `error` if that fails.
bool writeWholeFile(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Puts the names of the files in a folder on the disk, so that a file which was just written is still there
/// after a power failure. Does nothing where the system does not offer that.
void syncFolder(const QString& path);

enum class ReplaceResult { Written, NotReplaced, NotWritten };

/// Writes a file and replaces an old one of that name, a read-only one too. The old content stays until the
/// new one is safely on disk. If an old file can't be replaced the user may try again, as with KillEx.
/// NotReplaced: the user gave up. NotWritten: no old file was there, and the new one could not be written.
ReplaceResult replaceFile(Context& context, const QString& path, const QByteArray& bytes);

/// Reads the whole content of a file. Returns false if it can't be read.
bool readWholeFile(const QString& path, QByteArray& bytes);

/// Folder that was last used for a purpose. If there is none or it is gone, the default folder for exports.
QString GetLastInitDir(const Context& context, const QString& use);
/// Stores the folder part of an absolute path. Any other text is ignored.
void SetLastInitDir(Context& context, const QString& use, const QString& path);

} // namespace kalmo::app
