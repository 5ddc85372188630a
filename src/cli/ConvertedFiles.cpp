#include "cli/ConvertedFiles.h"

namespace kalmo::cli {

using media::Fault;
using media::UploadKind;

namespace {

/// The one folder for files of these kinds; root if there is none.
obex::PhonePath folderByKind(const Job& job)
{
    UploadKind common = UploadKind::None;
    for (const QString& word : job.invocation.arguments) {
        const UploadKind kind = media::kindOfFile(word, job.phoneType());
        if (common != UploadKind::None && kind != UploadKind::None && kind != common)
            return obex::PhonePath();
        common = kind == UploadKind::None ? common : kind;
    }
    return obex::PhonePath(media::folderFor(common));
}

} // namespace

ConvertedFiles convertFiles(Job& job, const MediaOptions& options)
{
    ConvertedFiles converted;
    const bool hasFolder = job.invocation.has(u"--to"_s);
    converted.folder = hasFolder ? obex::PhonePath(job.invocation.value(u"--to"_s)) : folderByKind(job);
    const media::UploadOptions wanted{.phoneType = job.phoneType(),
                                      .kind =
                                          media::uploadKind(converted.folder.forEngine(), job.phoneType()),
                                      .trimSeconds = options.trimSeconds,
                                      .quality = options.quality};
    if (wanted.kind == UploadKind::None) {
        job.out.error(textOf({Fault::NoFolder}) + u"; name one of them by --to."_s);
        return {.status = ExitWrongUse};
    }
    converted.batch = media::prepareFiles(
        job.context, job.invocation.arguments, wanted, {.cancel = &job.stop},
        {.begun = [&job](const QString& source) { job.progress.phase(u"Converting %1"_s.arg(source)); },
         .finished =
             [&job](const media::PreparedFile& file) {
                 if (file.remark)
                     job.out.note(textOf(*file.remark) + u"; it goes as BMP.\n"_s);
             }});
    job.progress.clear();
    return converted;
}

} // namespace kalmo::cli
