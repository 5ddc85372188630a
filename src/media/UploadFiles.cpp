#include "media/UploadFiles.h"

#include "media/MelodyConversion.h"
#include "media/PictureFile.h"
#include "media/SoundConversion.h"
#include "media/SourceFile.h"
#include "obex/PhonePath.h"

#include <QFileInfo>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

/// Takes the result of a conversion, under the source's name with another extension.
void take(PreparedFile& prepared, const Converted& converted, const QString& extension)
{
    prepared.file.name = convertedName(prepared.file.localPath, extension);
    prepared.file.bytes = converted.bytes;
    prepared.failure = converted.failure;
}

/// A picture that can't be coded as JPEG goes as BMP.
void preparePicture(app::Context& context, PreparedFile& prepared, PictureForm form,
                    const toolkit::CancelBox* cancel)
{
    Converted picture = convertPicture(context, prepared.file.localPath, form, cancel);
    if (form.asJpeg && picture.failure && picture.failure->fault == Fault::NoJpeg) {
        prepared.remark = picture.failure;
        form.asJpeg = false;
        picture = convertPicture(context, prepared.file.localPath, form, cancel);
    }
    take(prepared, picture, form.asJpeg ? u"jpg"_s : u"bmp"_s);
}

std::optional<Failure> checkFor(const QString& source, UploadKind kind)
{
    if (kind == UploadKind::None)
        return Failure{Fault::NoFolder, source};
    if (!isFit(source, kind))
        return Failure{Fault::NotFit, source};
    return checkSource(source);
}

} // namespace

PictureForm pictureForm(const UploadOptions& options)
{
    return {.size = pictureSize(options.phoneType, options.kind),
            .asJpeg = takesJpeg(options.phoneType),
            .quality = options.quality,
            .depth = bitmapDepth(options.phoneType),
            .fit = options.fit};
}

PreparedFile prepareFile(app::Context& context, const QString& source, const UploadOptions& options,
                         const toolkit::Progress& progress)
{
    PreparedFile prepared{.file = {.localPath = source, .name = QFileInfo(source).fileName()},
                          .failure = checkFor(source, options.kind)};
    if (prepared.failure)
        return prepared;
    if (isPicture(options.kind))
        preparePicture(context, prepared, pictureForm(options), progress.cancel);
    else if (options.kind == UploadKind::Melodies)
        take(prepared, convertMelody(context, source, progress), u"mid"_s);
    else if (isConvertible(source))
        take(prepared, convertSound(context, source, progress, options.trimSeconds), u"722"_s);
    if (!prepared.failure && QFileInfo(obex::nameAsSent(prepared.file.name)).completeBaseName().isEmpty())
        prepared.failure = Failure{Fault::NoName, source};
    return prepared;
}

PreparedBatch prepareFiles(app::Context& context, const QStringList& sources, const UploadOptions& options,
                           const toolkit::Progress& progress, const PrepareEvents& events)
{
    PreparedBatch batch;
    for (const QString& source : sources) {
        if (batch.isEnded() || progress.cancelled()) {
            batch.left.append(source);
            continue;
        }
        events.begun(source);
        const PreparedFile prepared = prepareFile(context, source, options, progress);
        events.finished(prepared);
        if (prepared.failure)
            batch.unfit.push_back(prepared);
        else
            batch.files.push_back(prepared.file);
    }
    return batch;
}

} // namespace kalmo::media
