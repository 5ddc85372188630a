#pragma once

#include "cli/MediaOptions.h"
#include "media/UploadRules.h"
#include "operations/SendFiles.h"

namespace kalmo::cli {

/// Files in the form of the phone's folder, and those that could not be converted.
struct ConvertedFiles
{
    struct Unfit
    {
        QString source;
        media::Failure failure;
    };

    /// Returns true if a failure ended the batch, so that nothing is to be sent.
    bool isEnded() const { return !unfit.empty() && media::endsBatch(unfit.back().failure.fault); }

    obex::PhonePath folder = obex::PhonePath();
    std::vector<operations::FileToSend> files = {};
    std::vector<Unfit> unfit = {};
    QStringList left = {};        ///< sources after a failure that ended the batch
    ExitStatus status = ExitDone; ///< of a failure that let no file be converted, and that was reported
};

/// Converts the command's files for the phone that was found. Without `--to` they go into the folder for
/// their kind; files of different kinds need `--to`.
ConvertedFiles convertFiles(Job& job, const MediaOptions& options);

} // namespace kalmo::cli
