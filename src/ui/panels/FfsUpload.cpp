#include "ui/panels/FfsUpload.h"

#include "app/Files.h"
#include "app/StoragePaths.h"
#include "app/WorkFolder.h"
#include "ui/panels/BatchDisplay.h"

#include <QFileInfo>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using media::Fault;
using media::PreparedFile;
using operations::FileAccess;

namespace {

constexpr double conversionShare = 0.2; // of the bar; the line to the phone takes most of the time

/// The files that are ready, with their bytes.
struct Batch
{
    std::vector<operations::FileToSend> files = {};
    qsizetype failed = 0; ///< files that could not be made ready
    bool goesOn = true;
    bool isStopped = false; ///< by the user
};

/// Shows why a file was left out. Among several it is named, though the sentence for sounds does not.
void tellFailure(app::Context& context, const media::Failure& failure, const QString& name, qsizetype files)
{
    toolkit::Message message = media::messageFor(failure);
    if (files > 1 && !message.text.contains(name) && !media::endsBatch(failure.fault))
        message.text += u'\n' + name;
    context.dialogs.Show(message);
}

void take(app::Context& context, const PreparedFile& file, Batch& batch, qsizetype files)
{
    const auto& told = file.failure ? file.failure : file.remark;
    if (told && told->fault != Fault::Cancelled)
        tellFailure(context, *told, QFileInfo(file.source).fileName(), files);
    if (file.failure) {
        batch.failed += file.failure->fault != Fault::Cancelled;
        batch.goesOn = !media::endsBatch(file.failure->fault);
        return;
    }
    QByteArray bytes;
    const bool isMade = file.path != file.source;
    if (isMade &&
        !app::readWholeFile(file.path, bytes)) { // the source must not go under the name of the result
        context.dialogs.Show(media::messageFor({Fault::NotWritten, file.path}));
        ++batch.failed;
        return;
    }
    batch.files.push_back({.localPath = file.source,
                           .name = QFileInfo(file.path).fileName(),
                           .bytes = isMade ? std::optional(bytes) : std::nullopt});
}

Batch prepareAll(Program& program, BatchDisplay& display, const UploadChoice& choice)
{
    const toolkit::Progress progress = display.progress();
    Batch batch;
    display.expect(choice.paths.size(), 0, {}, conversionShare);
    const app::WorkFolder folder(program.context);
    if (!folder.isValid()) {
        program.context.dialogs.Show(
            media::messageFor({Fault::NotWritten, app::workPath(program.context.sy)}));
        return {.goesOn = false};
    }
    for (const QString& path : choice.paths) {
        if (!batch.goesOn || progress.cancelled())
            break;
        display.next();
        progress.status(u"%1 wird umgewandelt..."_s.arg(QFileInfo(path).fileName()));
        take(
            program.context,
            media::prepareFile(program.context, path, choice.options, folder.filePath(u"upload"_s), progress),
            batch, choice.paths.size());
    }
    progress.status({});
    display.pause();
    batch.isStopped = progress.cancelled();
    batch.goesOn = batch.goesOn && !batch.isStopped;
    return batch;
}

} // namespace

bool convertAndUpload(Program& program, const std::shared_ptr<obex::clsMmc>& mmc,
                      const toolkit::Progress& progress, const obex::PhonePath& to,
                      const UploadChoice& choice, std::optional<qint64> freeBytes, const OnSent& onSent)
{
    BatchDisplay display(progress, program.context.clock);
    Batch batch;
    {
        // The window is blocked and can be cancelled as while the phone is at work.
        const FileAccess access(mmc, u"Upload"_s, display.progress());
        if (!access.mayBegin())
            return false;
        batch = prepareAll(program, display, choice);
    }
    const qsizetype leftOut = choice.passedOver + batch.failed;
    if (!batch.goesOn || batch.files.empty()) {
        display.conclude(
            sentenceOf({.verb = u"gesendet"_s, .leftOut = leftOut, .isStopped = batch.isStopped}));
        return false;
    }
    return uploadFiles(mmc, display, to, batch.files, freeBytes, leftOut, onSent) && batch.failed == 0;
}

} // namespace kalmo::ui
