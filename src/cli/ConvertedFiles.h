#pragma once

#include "cli/MediaOptions.h"
#include "media/UploadRules.h"
#include "operations/SendFiles.h"

namespace kalmo::cli {

/// Files in the form in which the phone's folder takes them, and those that can't be brought into it.
struct ConvertedFiles
{
    struct Unfit
    {
        QString source;
        media::Failure failure;
    };

    obex::PhonePath folder = obex::PhonePath();
    std::vector<operations::FileToSend> files = {};
    std::vector<Unfit> unfit = {};
    bool hasConverters = true; ///< false once a program was missing, which ends the run
};

/// Converts the command's files for the phone that has been found. Without `--to` they go where files of
/// their kind belong; nothing, and that has been told, where that is no single folder.
std::optional<ConvertedFiles> convertFiles(Job& job, const MediaOptions& options);

} // namespace kalmo::cli
