#include "media/UploadFiles.h"

#include "media/Beside.h"
#include "media/MelodyConversion.h"
#include "media/PictureConversion.h"
#include "media/SoundConversion.h"
#include "media/SourceFile.h"
#include "obex/PhonePath.h"

#include <QDir>
#include <QFileInfo>

namespace kalmo::media {

using namespace Qt::StringLiterals;

namespace {

QString pathIn(const QString& folder, const QString& source, const QString& extension)
{
    return folder + u'/' + convertedName(source, extension);
}

/// The picture as the phone shows it, or the failure to read it.
LoadedPicture pictureFor(app::Context& context, const QString& source, const UploadOptions& options,
                         const toolkit::CancelBox* cancel)
{
    const QSize size = pictureSize(options.phoneType, options.kind);
    auto [picture, stopped] =
        beside(context.clock, cancel, [source, size, fit = options.fit](const std::stop_token& stop) {
            LoadedPicture loaded = loadPicture(source, size, stop);
            loaded.image = fitted(loaded.image, size, fit);
            return loaded;
        });
    if (stopped)
        picture.failure = Failure{*stopped, source};
    return picture;
}

PreparedFile prepareSound(app::Context& context, const QString& source, const UploadOptions& options,
                          const QString& folder, const toolkit::Progress& progress)
{
    const QString ending = QFileInfo(source).suffix().toLower();
    if (ending == u"l22"_s || ending == u"722"_s)
        return {source, source};
    const QString target = pathIn(folder, source, u"722"_s);
    return {source, target, ConvertAudioToL22(context, source, target, progress, options.trimSeconds)};
}

bool hasName(const QString& path)
{
    return !QFileInfo(obex::nameAsSent(path)).completeBaseName().isEmpty();
}

} // namespace

PreparedFile preparePicture(app::Context& context, const QString& source, const UploadOptions& options,
                            const QString& folder, const toolkit::CancelBox* cancel)
{
    const LoadedPicture picture = pictureFor(context, source, options, cancel);
    if (picture.failure)
        return {source, {}, picture.failure};
    const QString bitmap = pathIn(folder, source, u"bmp"_s);
    if (SaveBitmapToBmp(picture.image, bitmap, bitmapDepth(options.phoneType)) < 1)
        return {source, {}, Failure{Fault::NotWritten, bitmap}};
    if (!takesJpeg(options.phoneType))
        return {source, bitmap};
    const QString jpeg = pathIn(folder, source, u"jpg"_s);
    int quality = options.quality;
    if (const auto failure = ConvertBmpToJpg(bitmap, jpeg, quality))
        return {source, bitmap, {}, failure};
    return {source, jpeg};
}

PreparedFile prepareFile(app::Context& context, const QString& source, const UploadOptions& options,
                         const QString& folder, const toolkit::Progress& progress)
{
    if (options.kind == UploadKind::None)
        return {source, {}, Failure{Fault::NoFolder, source}};
    if (!isFit(source, options.kind))
        return {source, {}, Failure{Fault::NotFit, source}};
    if (const auto failure = checkSource(source))
        return {source, {}, failure};
    if (!QDir().mkpath(folder))
        return {source, {}, Failure{Fault::NotWritten, folder}};
    PreparedFile file{source};
    if (isPicture(options.kind)) {
        file = preparePicture(context, source, options, folder, progress.cancel);
    } else if (options.kind == UploadKind::Sounds) {
        file = prepareSound(context, source, options, folder, progress);
    } else {
        file.path = pathIn(folder, source, u"mid"_s);
        file.failure = convertMelody(context, source, file.path, progress);
    }
    if (!file.failure && !hasName(file.path))
        file.failure = Failure{Fault::NoName, source};
    return file;
}

} // namespace kalmo::media
