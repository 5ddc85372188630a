#pragma once

#include "cli/MediaOptions.h"
#include "media/UploadFiles.h"

namespace kalmo::cli {

/// Files in the form of the phone's folder.
struct ConvertedFiles
{
    obex::PhonePath folder = obex::PhonePath();
    media::PreparedBatch batch = {};
    ExitStatus status = ExitDone; ///< of a failure that let no file be converted, and that was reported
};

/// Converts the command's files for the phone that was found. Without `--to` they go into the folder for
/// their kind; files of different kinds need `--to`.
ConvertedFiles convertFiles(Job& job, const MediaOptions& options);

} // namespace kalmo::cli
