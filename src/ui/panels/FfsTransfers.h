#pragma once

#include "operations/SendFiles.h"

#include <QStringList>

namespace kalmo::ui {

class BatchDisplay;

/// Transfers of the file system panel. Each asks its questions first, shows one progress for all files, stops
/// at the first failure, and ends with a sentence in the status panel. Each keeps the client until it has
/// ended.

/// A folder of this computer for downloads.
struct LocalFolder
{
    QString path;
    bool isScratch = false; ///< the user need not know it
};

using OnSaved = std::function<void(const obex::PhonePath& path, qint64 bytes, const QString& localPath)>;

/// Reads files of a folder of the phone into a local one, which no name can leave. A local file of that name
/// is replaced only if the user wants it. `onSaved` gets each file that is saved.
void downloadFiles(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& from, const QStringList& names, const LocalFolder& folder,
                   const OnSaved& onSaved);

using OnSent = std::function<void(const operations::PlannedFile& file)>;

/// Sends files into a folder of the phone. One that the phone has already is replaced only if the user wants
/// it. `freeBytes` is what the phone has room for; where that is not known, the phone itself has to refuse.
/// `leftOut` is the number of files that were left out before, and `onSent` gets each file that the phone
/// holds now. `display` may have shown a stage before.
void uploadFiles(const std::shared_ptr<obex::clsMmc>& mmc, BatchDisplay& display, const obex::PhonePath& to,
                 const std::vector<operations::FileToSend>& files, std::optional<qint64> freeBytes,
                 qsizetype leftOut, const OnSent& onSent);

/// Deletes files and empty folders of a folder in the phone, in this order. Returns true if none of them is
/// in the phone any more.
bool deleteEntries(const std::shared_ptr<obex::clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& in, const QStringList& names);

} // namespace kalmo::ui
