#pragma once

#include "app/Context.h"
#include "phonedata/ClassicEntry.h"

namespace kalmo::phonedata {

/// Backups are text in the code page, one entry a line, all fields in double quotes with a comma between them
/// and no heading: .tel holds name, number, date, date sound, VIP, VIP sound; .prv holds name and number.
///
/// Saving does nothing for an empty list, and replaces an older file only once the new one is safely on disk.
/// It returns false, after a message, if the file can't be written. Loading clears the list first, and shows
/// a message about a file that can't be read.

bool SaveTel(app::Context& context, const toolkit::ListRows& list, const QString& path);
bool LoadTel(app::Context& context, toolkit::ListRows& list, const QString& path);
bool SavePrv(app::Context& context, const toolkit::ListRows& list, const QString& path);
bool LoadPrv(app::Context& context, toolkit::ListRows& list, const QString& path);

/// Stands for a quote in a name.
inline constexpr QChar quoteStandIn = u'•'; // code 149

/// The lines of such files. A quote in a name is replaced; no other field is protected.
QByteArray telBytes(const std::vector<ClassicEntry>& entries);
QByteArray prvBytes(const std::vector<ProviderEntry>& entries);

/// The entries in such files. Lines of a .tel file with fewer than two fields are skipped; VIP and its sound
/// are taken for handsets of types 2 to 4 only.
std::vector<ClassicEntry> telEntries(const QByteArray& bytes, int phoneType);
std::vector<ProviderEntry> prvEntries(const QByteArray& bytes);

/// The message about a file that could not be written; `reason` is the system's.
toolkit::Message messageOfFailedFile(const QString& path, const QString& reason);

/// Writes a file whole. Returns false, after that message, if that fails.
bool saveBackup(app::Context& context, const QString& path, const QByteArray& bytes);

/// Path of an automatic backup in the folder for backups: `what`, a time stamp and the extension. A name that
/// is taken already, by a backup of the same second, gets a number after it.
QString backupPath(const app::Context& context, const QString& what, const QString& extension);

/// The same for a copy of what the phone holds.
QString phoneCopyPath(const app::Context& context, const QString& extension);

} // namespace kalmo::phonedata
