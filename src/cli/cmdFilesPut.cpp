// kalmoctl files put: sends files to the phone.

#include "cli/BatchProgress.h"
#include "cli/Commands.h"
#include "cli/ConvertedFiles.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FileWords.h"
#include "cli/Tables.h"
#include "operations/SendFiles.h"

#include <QFileInfo>
#include <QJsonObject>

namespace kalmo::cli {

using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::PlannedFile;
using operations::SendPlan;
using operations::State;

namespace {

/// One file, as JSON has it; a converted one carries the name of its source and that in the phone.
QJsonObject resultOf(const PlannedFile& file, const FileOutcome& outcome)
{
    QJsonObject result{{u"name"_s, file.path.name()},
                       {u"path"_s, file.path.shown()},
                       {u"size"_s, file.size},
                       {u"backup"_s, outcome.savedIn.isEmpty() ? QJsonValue() : QJsonValue(outcome.savedIn)},
                       {u"written"_s, outcome.state == State::Done},
                       {u"state"_s, operations::wordOf(outcome.state)}};
    if (file.file.name.isEmpty())
        return result;
    result.insert(u"name"_s, QFileInfo(file.file.localPath).fileName());
    result.insert(u"sentAs"_s, file.path.name());
    return result;
}

/// A file that was not converted, as JSON has it.
QJsonObject resultOf(const QString& source)
{
    return {{u"name"_s, QFileInfo(source).fileName()},
            {u"path"_s, QJsonValue()},
            {u"size"_s, QFileInfo(source).size()},
            {u"backup"_s, QJsonValue()},
            {u"written"_s, false},
            {u"state"_s, operations::wordOf(State::Unchanged)},
            {u"sentAs"_s, QJsonValue()}};
}

QString notSent(const QString& source)
{
    return u"%1 was not sent"_s.arg(source);
}

QString failure(const Job& job, const PlannedFile& file, const FileOutcome& outcome)
{
    const QString shown = printable(file.path.shown());
    const QString couldNot = u"could not send %1 to %2"_s.arg(file.file.localPath, shown);
    if (outcome.isOldLost) {
        return u"%1: %2.\nThe phone's former %3 is gone; \"%4\" puts it back, and a copy is in %5"_s.arg(
            couldNot, reasonText(outcome), shown, job.invocation.again(u"undo"_s), outcome.savedIn);
    }
    if (file.replaced && outcome.state == State::Unchanged)
        return u"%1: %2; the phone's own %3 stays as it was"_s.arg(couldNot, reasonText(outcome), shown);
    if (operations::isUncompared(outcome)) {
        return u"could not compare %1 with %2: %3; the phone confirmed all of it"_s.arg(
            shown, file.file.localPath, reasonText(outcome));
    }
    return failureText(couldNot, outcome,
                       outcome.mayHoldPart ? u"the phone may hold a part of it"_s
                                           : u"it is not known whether the phone has it"_s);
}

class Putter
{
public:
    explicit Putter(Job& job)
        : m_job(job), m_batch(job),
          m_plan(operations::planSend(PhonePath(job.invocation.value(u"--to"_s)), filesOf(job)))
    {
    }

    ExitStatus run();
    /// The same with files that are converted for the phone first.
    ExitStatus runConverting(const MediaOptions& options);

private:
    static std::vector<operations::FileToSend> filesOf(const Job& job);
    void report(const PlannedFile& file, const FileOutcome& outcome);
    bool look(FileAccess& access);
    void sendAll(FileAccess& access, BatchProgress& progress);
    ExitStatus sendOver(const std::shared_ptr<obex::clsMmc>& client);
    void reportUnsent(const QStringList& unconverted);
    ExitStatus reportUnlisted(FileAccess& access);
    bool requireRoom();
    void askToReplace();

    Job& m_job;
    FileBatch m_batch;
    SendPlan m_plan;
    operations::SendPolicy m_policy;
};

std::vector<operations::FileToSend> Putter::filesOf(const Job& job)
{
    std::vector<operations::FileToSend> files;
    for (const QString& word : job.invocation.arguments)
        files.push_back({.localPath = word});
    return files;
}

void Putter::report(const PlannedFile& file, const FileOutcome& outcome)
{
    const QString shown = printable(file.path.shown());
    const QJsonObject result = resultOf(file, outcome);
    if (!outcome.savedIn.isEmpty())
        m_job.out.note(u"The phone's former %1 is saved in %2.\n"_s.arg(shown, outcome.savedIn));
    if (!file.isPossible())
        m_batch.failed(result, statusOf(file.obstacle),
                       obstacleText(file.obstacle, shown, file.file.localPath));
    else if (outcome.state == State::Done)
        m_batch.done(result, u"%1 sent to %2"_s.arg(file.file.localPath, shown));
    else
        m_batch.failed(result, ExitFailed, failure(m_job, file, outcome));
}

/// Finds the files that would be replaced in the phone. Returns true if the folder was listed.
bool Putter::look(FileAccess& access)
{
    m_job.progress.phase(u"Listing %1"_s.arg(m_plan.folder.shown()));
    m_policy.freeBytes = access.askForRoom(m_plan.folder);
    if (!operations::lookBeforeSending(access, m_plan, m_policy))
        return false;
    m_job.progress.clear();
    return true;
}

/// Reports the files that were ready, and those that were not even converted.
void Putter::reportUnsent(const QStringList& unconverted)
{
    const ExitStatus status = m_job.stop.Checked() ? ExitRefused : ExitFailed;
    for (const PlannedFile& file : m_plan.files) {
        if (file.isPossible())
            m_batch.failed(resultOf(file, {}), status, notSent(file.file.localPath));
        else
            report(file, {});
    }
    for (const QString& source : unconverted)
        m_batch.failed(resultOf(source), status, notSent(source));
}

/// Reports files for a folder that could not be listed, so nothing was sent.
ExitStatus Putter::reportUnlisted(FileAccess& access)
{
    const QString folder = printable(m_plan.folder.shown());
    const QString reason = access.client().lastCode() == obex::NotFound
                               ? u"there is no folder %1 in the phone"_s.arg(folder)
                               : u"could not list %1 (%2)"_s.arg(folder, reasonText(access.cause()));
    const bool isStopped = m_job.stop.Checked();
    for (const PlannedFile& file : m_plan.files) {
        const QString local = file.file.localPath;
        if (file.isPossible())
            m_batch.failed(resultOf(file, {}), isStopped ? ExitRefused : ExitFailed,
                           isStopped ? notSent(local) : u"could not send %1: %2"_s.arg(local, reason));
        else
            report(file, {});
    }
    return m_batch.finish();
}

/// Returns true if the phone has room for all files. Otherwise reports every file; none is sent.
bool Putter::requireRoom()
{
    if (operations::requireRoom(m_plan, m_policy))
        return true;
    for (const PlannedFile& file : m_plan.files) {
        if (file.isPossible())
            m_batch.failed(resultOf(file, {}), ExitFailed, notSent(file.file.localPath));
        else
            report(file, {});
    }
    return false;
}

void Putter::askToReplace()
{
    for (PlannedFile& file : m_plan.files) {
        const QString shown = printable(file.path.shown());
        if (file.isPossible() && file.replaced &&
            !m_job.questions.confirm(u"Replace %1 in the phone?"_s.arg(shown)))
            file.obstacle = FileObstacle::Kept;
    }
}

void Putter::sendAll(FileAccess& access, BatchProgress& progress)
{
    qint64 total = 0;
    for (const PlannedFile& file : m_plan.files)
        total += file.isPossible() ? file.size : 0;
    progress.expect(m_plan.possible(), total);
    const operations::SendEvents events{
        .saving =
            [&](const PlannedFile& file) {
                m_job.progress.phase(u"Saving %1"_s.arg(printable(file.path.shown())));
            },
        .sending = [&](const PlannedFile& file) { progress.next(file.path.name(), file.size); },
        .finished = [&](const PlannedFile& file, const FileOutcome& outcome) { report(file, outcome); }};
    operations::applySend(access, m_plan, m_policy, events);
}

ExitStatus Putter::run()
{
    if (!m_plan.isAnyPossible()) {
        for (const PlannedFile& file : m_plan.files)
            report(file, {});
        return m_batch.finish();
    }
    return withDataChannel(m_job, Intent::Changes,
                           [&](const std::shared_ptr<obex::clsMmc>& client) { return sendOver(client); });
}

ExitStatus Putter::sendOver(const std::shared_ptr<obex::clsMmc>& client)
{
    BatchProgress progress(m_job.out, m_job.context.clock, u"Sending"_s);
    FileAccess access(client, u"files put"_s, {.bar = &progress, .cancel = &m_job.stop});
    if (!look(access))
        return reportUnlisted(access);
    if (!requireRoom())
        return m_batch.finish();
    askToReplace();
    if (!requireRoom()) // a file that is kept gives no room to others
        return m_batch.finish();
    sendAll(access, progress);
    if (access.isRecordOpen())
        m_job.out.note(openRecordText());
    return m_batch.finish();
}

ExitStatus Putter::runConverting(const MediaOptions& options)
{
    return withDataChannel(m_job, Intent::Changes, [&](const std::shared_ptr<obex::clsMmc>& client) {
        const auto [folder, batch, status] = convertFiles(m_job, options);
        if (status != ExitDone)
            return status;
        for (const media::PreparedFile& file : batch.unfit)
            m_batch.failed(resultOf(file.file.localPath), statusOf(*file.failure), textOf(*file.failure));
        m_plan = operations::planSend(folder, batch.files);
        if (!batch.isEnded() && !m_job.stop.Checked() && m_plan.isAnyPossible())
            return sendOver(client);
        reportUnsent(batch.left);
        return m_batch.finish();
    });
}

} // namespace

ExitStatus runFilesPut(Job& job)
{
    const bool converts = job.invocation.has(u"--convert"_s);
    const auto options = mediaOptions(job);
    if (!options)
        return ExitWrongUse;
    if (!converts && (job.invocation.has(u"--trim"_s) || job.invocation.has(u"--quality"_s))) {
        job.out.error(u"--trim and --quality go with --convert."_s);
        return ExitWrongUse;
    }
    Putter putter(job);
    return converts ? putter.runConverting(*options) : putter.run();
}

} // namespace kalmo::cli
