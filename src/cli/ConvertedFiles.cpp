#include "cli/ConvertedFiles.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/WorkFolder.h"
#include "media/UploadFiles.h"

#include <QFileInfo>

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

/// Adds a file to those that can be sent, or to those that can't.
void take(ConvertedFiles& converted, const media::PreparedFile& file)
{
    QByteArray bytes;
    if (file.failure)
        converted.unfit.push_back({file.source, *file.failure});
    else if (!app::readWholeFile(file.path, bytes))
        converted.unfit.push_back(
            {file.source,
             media::Failure{file.path == file.source ? Fault::NotReadable : Fault::NotWritten, file.path}});
    else
        converted.files.push_back(
            {.localPath = file.source, .name = QFileInfo(file.path).fileName(), .bytes = bytes});
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
    const app::WorkFolder folder(job.context);
    if (!folder.isValid()) {
        job.out.error(textOf({Fault::NotWritten, app::workPath(job.context.sy)}) + u'.');
        return {.status = ExitFailed};
    }
    for (const QString& word : job.invocation.arguments) {
        if (job.stop.Checked() || converted.isEnded()) {
            converted.left.append(word);
            continue;
        }
        job.progress.phase(u"Converting %1"_s.arg(word));
        const QString place =
            folder.filePath(QString::number(converted.files.size())); // names may be cut alike
        const auto file = media::prepareFile(job.context, word, wanted, place, {.cancel = &job.stop});
        if (file.remark)
            job.out.note(textOf(*file.remark) + u"; it goes as BMP.\n"_s);
        take(converted, file);
    }
    job.progress.clear();
    return converted;
}

} // namespace kalmo::cli
