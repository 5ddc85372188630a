#pragma once

#include "app/Context.h"
#include "media/Failure.h"
#include "media/UploadRules.h"
#include "toolkit/Progress.h"

namespace kalmo::media {

/// How files are to come to the phone.
struct UploadOptions
{
    int phoneType = 0;
    UploadKind kind = UploadKind::None;
    int trimSeconds = 0; ///< of sounds; 0 keeps all
    int quality = defaultQuality;
    Fit fit = Fit::Stretch;
};

/// A file that is ready to be sent, or what was wrong with it.
struct PreparedFile
{
    QString source;
    QString path = {}; ///< of what is sent, under the name that it is sent by
    std::optional<Failure> failure = {};
    std::optional<Failure> remark = {}; ///< it can be sent, but not in the form that was wanted
};

/// Makes of a picture a file in `folder` as the phone takes it. `options.kind` says for which of its folders.
PreparedFile preparePicture(app::Context& context, const QString& source, const UploadOptions& options,
                            const QString& folder);

/// Brings a file into the form that the phone's folder takes. What is made lies in `folder`, which should be
/// empty: files of the same name are replaced.
PreparedFile prepareFile(app::Context& context, const QString& source, const UploadOptions& options,
                         const QString& folder, const toolkit::Progress& progress);

} // namespace kalmo::media
