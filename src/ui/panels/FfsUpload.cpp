#include "ui/panels/FfsUpload.h"

#include "media/UploadFiles.h"
#include "ui/panels/BatchDisplay.h"

#include <QFileInfo>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using media::Fault;
using operations::FileAccess;

namespace {

constexpr double conversionShare = 0.2; // of the bar; the line to the phone takes most of the time

/// Shows why a file was left out. Among several it is named, though the sentence for sounds does not.
void tellFailure(app::Context& context, const media::Failure& failure, const QString& name, qsizetype files)
{
    toolkit::Message message = media::messageFor(failure);
    if (files > 1 && !message.text.contains(name) && !media::endsBatch(failure.fault))
        message.text += u'\n' + name;
    context.dialogs.Show(message);
}

media::PreparedBatch prepareAll(Program& program, BatchDisplay& display, const UploadChoice& choice)
{
    const toolkit::Progress progress = display.progress();
    display.expect(choice.paths.size(), 0, {}, conversionShare);
    const auto begun = [&](const QString& path) {
        display.next();
        progress.status(u"%1 wird umgewandelt..."_s.arg(QFileInfo(path).fileName()));
    };
    const auto finished = [&](const media::PreparedFile& file) {
        const auto& told = file.failure ? file.failure : file.remark;
        if (told && told->fault != Fault::Cancelled)
            tellFailure(program.context, *told, QFileInfo(file.file.localPath).fileName(),
                        choice.paths.size());
    };
    media::PreparedBatch batch = media::prepareFiles(program.context, choice.paths, choice.options, progress,
                                                     {.begun = begun, .finished = finished});
    progress.status({});
    display.pause();
    return batch;
}

} // namespace

void convertAndUpload(Program& program, const std::shared_ptr<obex::clsMmc>& mmc,
                      const toolkit::Progress& progress, const obex::PhonePath& to,
                      const UploadChoice& choice, std::optional<qint64> freeBytes, const OnSent& onSent)
{
    BatchDisplay display(progress, program.context.clock);
    media::PreparedBatch batch;
    bool isStopped = false;
    {
        // The window is blocked and can be cancelled as while the phone is at work.
        const FileAccess access(mmc, u"Upload"_s, display.progress());
        if (!access.mayBegin())
            return;
        batch = prepareAll(program, display, choice);
        isStopped = display.progress().cancelled();
    }
    const auto failed = std::ranges::count_if(batch.unfit, [](const media::PreparedFile& file) {
        return file.failure->fault != Fault::Cancelled; // the user's wish
    });
    const qsizetype leftOut = choice.passedOver + failed;
    if (isStopped || batch.isEnded() || batch.files.empty()) {
        display.conclude(sentenceOf({.verb = u"gesendet"_s, .leftOut = leftOut, .isStopped = isStopped}));
        return;
    }
    uploadFiles(mmc, display, to, batch.files, freeBytes, leftOut, onSent);
}

} // namespace kalmo::ui
