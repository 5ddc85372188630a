#pragma once

#include "operations/FileAccess.h"

#include <functional>

namespace kalmo::operations {

/// A file or empty folder of the phone that is to go.
struct FileToDelete
{
    obex::PhonePath path;
    FileObstacle obstacle = FileObstacle::None;
    std::optional<obex::tObxDirEntry> entry = {}; ///< as its folder lists it
};

struct DeletePolicy
{
    bool force = false;          ///< makes each deletable first, for what is protected
    bool stopsAtFailure = false; ///< leaves out the files after one that failed
};

/// Reports and questions of a deletion. Each may be empty.
struct DeleteEvents
{
    std::function<void(const FileToDelete&)> saving = {}; ///< its bytes are read for the record
    std::function<void(const FileToDelete&)> deleting = {};
    std::function<void(const FileToDelete&, const FileOutcome&)> finished = {};
    /// Asks about files that the phone does not allow to read: returns true if they may be deleted without a
    /// record of their bytes.
    std::function<bool(const QStringList& names)> mayLose = {};
};

/// Step one, without the phone: finds the root and what is below telecom. What is named twice comes once.
std::vector<FileToDelete> planDelete(const std::vector<obex::PhonePath>& paths);

/// Step two: lists each folder once and finds what is to go. A folder is listed too: it has to be empty, but
/// for what is deleted before it.
void lookBeforeDeleting(FileAccess& access, std::vector<FileToDelete>& files);

/// Step three: records all that goes, files with their bytes, then deletes in the given order. An answer that
/// did not come is replaced by a look into the folder. One outcome for each.
std::vector<FileOutcome> applyDelete(FileAccess& access, const std::vector<FileToDelete>& files,
                                     const DeletePolicy& policy, const DeleteEvents& events);

} // namespace kalmo::operations
