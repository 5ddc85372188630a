#pragma once

#include "operations/FileAccess.h"

namespace kalmo::operations {

/// A file of the phone that is wanted.
struct FileToFetch
{
    obex::PhonePath path;
    FileObstacle obstacle = FileObstacle::None;
    std::optional<obex::tObxDirEntry> entry = {}; ///< as its folder lists it, after findFiles()
};

/// Lists each folder of the files without an obstacle once, and fills in what it shows or the obstacle. What
/// could not be listed has been reported by the client.
void findFiles(FileAccess& access, std::vector<FileToFetch>& files);

/// Bytes of a file of the phone.
struct FetchedFile
{
    QByteArray bytes;
    bool isWhole = false; ///< as many as the phone lists
    FileOutcome outcome;  ///< Done if all bytes came; a failure has been reported by the client
};

/// Reads one file that findFiles() has found.
FetchedFile fetchFile(FileAccess& access, const FileToFetch& file);

} // namespace kalmo::operations
