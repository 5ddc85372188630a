// kalmoctl media: converts a sound, a melody or a picture for a handset, without a phone.

#include "app/Files.h"
#include "cli/Commands.h"
#include "cli/MediaOptions.h"
#include "media/MelodyConversion.h"
#include "media/PictureFile.h"
#include "media/SoundConversion.h"

#include <QFileInfo>
#include <QJsonObject>

namespace kalmo::cli {

namespace {

/// IN and OUT of a conversion.
struct Paths
{
    QString source;
    QString target;
};

/// Returns ExitDone if OUT may be written. Asks before it is replaced, and reports every other status.
ExitStatus check(Job& job, const Paths& paths)
{
    const QFileInfo target(paths.target);
    if (!app::FileExists(paths.source)) {
        job.out.error(u"there is no file %1."_s.arg(paths.source));
        return ExitWrongUse;
    }
    if (target.exists() && target.canonicalFilePath() == QFileInfo(paths.source).canonicalFilePath()) {
        job.out.error(u"%1 can't be its own result."_s.arg(paths.source));
        return ExitWrongUse;
    }
    if (!target.exists() || job.invocation.has(u"--force"_s) ||
        job.questions.confirm(u"Replace %1?"_s.arg(paths.target)))
        return ExitDone;
    job.out.error(u"%1 stays as it is."_s.arg(paths.target));
    return ExitRefused;
}

Paths pathsOf(const Job& job)
{
    return {job.invocation.arguments[0], job.invocation.arguments[1]};
}

ExitStatus finish(Job& job, const Paths& paths, const std::optional<media::Failure>& failure,
                  QJsonObject facts)
{
    job.progress.clear();
    if (failure) {
        job.out.error(textOf(*failure) + u'.');
        return statusOf(*failure);
    }
    const qint64 bytes = QFileInfo(paths.target).size();
    facts.insert(u"file"_s, paths.target);
    facts.insert(u"bytes"_s, bytes);
    job.out.show(facts, u"%1: %2 bytes\n"_s.arg(paths.target, QString::number(bytes)));
    return ExitDone;
}

} // namespace

ExitStatus runMediaSound(Job& job)
{
    const Paths paths = pathsOf(job);
    const auto options = mediaOptions(job);
    if (!options)
        return ExitWrongUse;
    if (const ExitStatus status = check(job, paths); status != ExitDone)
        return status;
    job.progress.phase(u"Converting %1"_s.arg(paths.source));
    const auto failure =
        media::ConvertAudioToL22(job.context, paths.source, paths.target,
                                 {.bar = &job.progress, .cancel = &job.stop}, options->trimSeconds);
    const auto bytes = static_cast<double>(QFileInfo(paths.target).size());
    return finish(job, paths, failure, {{u"seconds"_s, bytes / media::codesPerSecond}});
}

ExitStatus runMediaMelody(Job& job)
{
    const Paths paths = pathsOf(job);
    if (const ExitStatus status = check(job, paths); status != ExitDone)
        return status;
    const auto melody = media::convertMelody(job.context, paths.source, {.cancel = &job.stop});
    const auto failure = media::saveConverted(melody, paths.target);
    return finish(job, paths, failure, {});
}

ExitStatus runMediaPicture(Job& job)
{
    const Paths paths = pathsOf(job);
    const auto options = mediaOptions(job);
    if (!options)
        return ExitWrongUse;
    const int family = job.invocation.value(u"--family"_s).toInt();
    if (family == 0) {
        job.out.error(u"say for which --family of handsets, 5, 6 or 8 to 13."_s);
        return ExitWrongUse;
    }
    const QString ending = QFileInfo(paths.target).suffix().toLower();
    const bool asJpeg = ending == u"jpg"_s || ending == u"jpeg"_s;
    if (!asJpeg && ending != u"bmp"_s) {
        job.out.error(u"%1 has to end in .jpg or .bmp."_s.arg(paths.target));
        return ExitWrongUse;
    }
    if (asJpeg && !media::takesJpeg(family)) {
        job.out.error(u"family %1 takes no JPEG; end the result in .bmp."_s.arg(family));
        return ExitWrongUse;
    }
    if (const ExitStatus status = check(job, paths); status != ExitDone)
        return status;
    const bool isClip = job.invocation.has(u"--clip"_s);
    const media::PictureForm form{.size = media::pictureSize(family, isClip ? media::UploadKind::ClipPictures
                                                                            : media::UploadKind::Pictures),
                                  .asJpeg = asJpeg,
                                  .quality = options->quality,
                                  .depth = media::bitmapDepth(family)};
    const auto picture = media::convertPicture(job.context, paths.source, form, &job.stop);
    const auto failure = media::saveConverted(picture, paths.target);
    return finish(job, paths, failure,
                  {{u"width"_s, form.size.width()},
                   {u"height"_s, form.size.height()},
                   {u"bits"_s, asJpeg ? 24 : form.depth}});
}

} // namespace kalmo::cli
