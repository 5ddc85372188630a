#pragma once

#include "app/Context.h"
#include "media/Failure.h"
#include "media/UploadRules.h"
#include "operations/SendFiles.h"
#include "toolkit/Progress.h"

#include <functional>

namespace kalmo::media {

/// The form in which files are sent.
struct UploadOptions
{
    int phoneType = 0;
    UploadKind kind = UploadKind::None;
    int trimSeconds = 0; ///< of sounds; 0 keeps all
    int quality = defaultQuality;
    Fit fit = Fit::Stretch;
};

/// The form of a picture in the phone's folder `options.kind`.
PictureForm pictureForm(const UploadOptions& options);

/// A file in the form of the phone's folder, or its failure.
struct PreparedFile
{
    operations::FileToSend file; ///< without bytes where the source is sent as it is
    std::optional<Failure> failure = {};
    std::optional<Failure> remark = {}; ///< the reason why it is sent in another form than the wanted one
};

PreparedFile prepareFile(app::Context& context, const QString& source, const UploadOptions& options,
                         const toolkit::Progress& progress);

/// The files of one upload.
struct PreparedBatch
{
    /// Returns true if a failure ended the batch, so that nothing is to be sent.
    bool isEnded() const { return !unfit.empty() && endsBatch(unfit.back().failure->fault); }

    std::vector<operations::FileToSend> files = {};
    std::vector<PreparedFile> unfit = {};
    QStringList left = {}; ///< sources after a failure that ended the batch, or after the user stopped it
};

/// Reports while files are prepared.
struct PrepareEvents
{
    std::function<void(const QString& source)> begun;
    std::function<void(const PreparedFile&)> finished;
};

/// Prepares files one after the other. Ends early if the user cancels, or at a failure that the next file
/// would have as well.
PreparedBatch prepareFiles(app::Context& context, const QStringList& sources, const UploadOptions& options,
                           const toolkit::Progress& progress, const PrepareEvents& events);

} // namespace kalmo::media
