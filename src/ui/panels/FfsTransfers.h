#pragma once

#include "obex/clsMmc.h"

#include <QStringList>

#include <optional>

namespace kalmo::ui {

/// What the file system panel does with several files at once. Each keeps the client until it has ended, asks
/// and tells by the dialogs, and stops at the first failure, which the client has told.

/// Reads files of the phone's current folder into a local one, which no name can leave. A local file of that
/// name is replaced only if the user wants it. What was not saved is told where that isn't plain.
bool downloadFiles(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const QStringList& names, const QString& folder);

/// Sends local files into the phone's current folder, as they are. A file that the phone has already is
/// replaced only if the user wants it, and is copied to the folder for backups first. `freeBytes` is what the
/// phone has room for; where that is not known, the phone itself has to refuse.
bool uploadFiles(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                 const QStringList& paths, std::optional<qint64> freeBytes);

/// Deletes files and empty folders in the phone.
bool deleteEntries(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const QStringList& names);

} // namespace kalmo::ui
