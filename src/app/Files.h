#pragma once

#include "app/Context.h"

namespace kalmo::app {

/// Whether the path names a file. "", "." and ".." never do.
bool FileExists(const QString& path);

/// Whether the path names a folder. "", "." and ".." never do.
bool DirExists(const QString& path);

/// Deletes a file, a read-only one too. Never tells of an error.
void DeleteQuiet(const QString& path);

/// Deletes a file, a read-only one too, and lets the user try again where that fails. True if the file is
/// gone. The programs do not use it yet.
bool KillEx(Context& context, const QString& path);

/// Gives a file another name within its folder. False if it stays, for one of that name that is there already
/// too.
bool moveFile(const QString& from, const QString& to);

/// Moves a file out of the way, to a name beside it that is free, and lets the user try again where that
/// fails, as with KillEx. Its new path; empty if it stays.
QString moveAside(Context& context, const QString& path);

/// Deletes every file in a folder and tells of no error; folders within it stay.
void emptyFolder(const QString& path);

/// Makes a folder and all above it. Paths shorter than 4 characters are refused. A failure is shown and
/// logged.
bool EnsureDirExists(Context& context, const QString& path);

/// The same, logged only.
bool EnsureDirExistsNoMsgBox(Context& context, const QString& path);

/// Writes a probe file into the folder and deletes it again. A failure is shown.
bool WriteTest(Context& context, const QString& folder);

/// Writes the whole file or nothing: the old content stays until the new one is safely on disk.
/// False, with the system's reason in `error`, if that fails.
bool writeWholeFile(const QString& path, const QByteArray& bytes, QString* error = nullptr);

/// Puts the names of the files in a folder on the disk, so that a file which was just written is still there
/// after a power failure. Does nothing where the system does not offer that.
void syncFolder(const QString& path);

enum class ReplaceResult { Written, NotReplaced, NotWritten };

/// Writes a file, in the place of an old one of that name if there is one, a read-only one too. The old
/// content stays until the new one is safely on disk. Where an old file can't be replaced the user may try
/// again, as with KillEx; NotReplaced is his giving up. NotWritten: nothing was in the way and the file could
/// still not be written.
ReplaceResult replaceFile(Context& context, const QString& path, const QByteArray& bytes);

/// Whole content of a file; false if it can't be read.
bool readWholeFile(const QString& path, QByteArray& bytes);

/// Folder that was last used for a purpose; the default for exports if there is none or it is gone.
QString GetLastInitDir(const Context& context, const QString& use);
/// Remembers the folder part of an absolute path; any other text is ignored.
void SetLastInitDir(Context& context, const QString& use, const QString& path);

} // namespace kalmo::app
