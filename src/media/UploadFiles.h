#pragma once

#include "app/Context.h"
#include "media/Failure.h"
#include "media/UploadRules.h"
#include "toolkit/Progress.h"

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

/// A file that is ready to be sent, or its failure.
struct PreparedFile
{
    QString source;
    QString path = {}; ///< of the file that is sent, with its name in the phone
    std::optional<Failure> failure = {};
    std::optional<Failure> remark = {}; ///< the reason why it is sent in another form than the wanted one
};

/// Converts a picture to the form of the phone's folder `options.kind`, as a file in `folder`.
PreparedFile preparePicture(app::Context& context, const QString& source, const UploadOptions& options,
                            const QString& folder, const toolkit::CancelBox* cancel = nullptr);

/// Brings a file into the form of the phone's folder. Writes the result into `folder` and replaces a file of
/// that name there.
PreparedFile prepareFile(app::Context& context, const QString& source, const UploadOptions& options,
                         const QString& folder, const toolkit::Progress& progress);

} // namespace kalmo::media
