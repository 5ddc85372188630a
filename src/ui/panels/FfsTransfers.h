#pragma once

#include "operations/SendFiles.h"

#include <QStringList>

namespace kalmo::ui {

/// What the file system panel does with several files at once: it asks, has the operation done, and says what
/// came of it. Each keeps the client until it has ended, and stops at the first failure. True if all was
/// done that the user wanted.

/// Reads files of a folder of the phone into a local one, which no name can leave. A local file of that name
/// is replaced only if the user wants it.
bool downloadFiles(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& from, const QStringList& names, const QString& folder);

/// Sends files into a folder of the phone. One that the phone has already is replaced only if the user wants
/// it. `freeBytes` is what the phone has room for; where that is not known, the phone itself has to refuse.
bool uploadFiles(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                 const obex::PhonePath& to, const std::vector<operations::FileToSend>& files,
                 std::optional<qint64> freeBytes);

/// Deletes files and empty folders of a folder in the phone, in this order.
bool deleteEntries(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& in, const QStringList& names);

} // namespace kalmo::ui
