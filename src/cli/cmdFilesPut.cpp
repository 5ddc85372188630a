// kalmoctl files put: sends files to the phone.

#include "cli/BatchProgress.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FileWords.h"
#include "cli/Tables.h"
#include "operations/SendFiles.h"

#include <QJsonObject>

namespace kalmo::cli {

using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::PlannedFile;
using operations::SendPlan;
using operations::State;

namespace {

QJsonObject resultOf(const PlannedFile& file, const FileOutcome& outcome)
{
    return {{u"name"_s, file.path.name()},
            {u"path"_s, file.path.shown()},
            {u"size"_s, file.size},
            {u"backup"_s, outcome.savedIn.isEmpty() ? QJsonValue() : QJsonValue(outcome.savedIn)},
            {u"written"_s, outcome.state == State::Done},
            {u"state"_s, operations::wordOf(outcome.state)}};
}

QString failure(const PlannedFile& file, const FileOutcome& outcome)
{
    const QString shown = printable(file.path.shown());
    const QString couldNot = u"could not send %1 to %2"_s.arg(file.file.localPath, shown);
    if (outcome.isOldLost) {
        return u"%1: %2.\nThe phone's former %3 is gone; \"kalmoctl undo\" puts it back, and a copy is in %4"_s
            .arg(couldNot, reasonText(outcome.cause), shown, outcome.savedIn);
    }
    if (file.replaced && outcome.state == State::Unchanged)
        return u"%1: %2; the phone's own %3 stays as it was"_s.arg(couldNot, reasonText(outcome.cause),
                                                                   shown);
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

private:
    static std::vector<operations::FileToSend> filesOf(const Job& job);
    void report(const PlannedFile& file, const FileOutcome& outcome);
    bool look(FileAccess& access);
    void sendAll(FileAccess& access, BatchProgress& progress);

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
        m_batch.failed(result, ExitFailed, failure(file, outcome));
}

/// Looks at what would be replaced in the phone, and asks. False if the folder could not be listed.
bool Putter::look(FileAccess& access)
{
    m_job.progress.phase(u"Listing %1"_s.arg(m_plan.folder.shown()));
    m_policy.freeBytes = access.askForRoom();
    if (!operations::lookBeforeSending(access, m_plan, m_policy))
        return false;
    m_job.progress.clear();
    for (PlannedFile& file : m_plan.files) {
        const QString shown = printable(file.path.shown());
        if (file.isPossible() && file.replaced &&
            !m_job.questions.confirm(u"Replace %1 in the phone?"_s.arg(shown)))
            file.obstacle = FileObstacle::Kept;
    }
    return true;
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
    return withDataChannel(m_job, Intent::Changes, [&](const std::shared_ptr<obex::clsMmc>& client) {
        BatchProgress progress(m_job.out, m_job.context.clock, u"Sending"_s);
        FileAccess access(client, u"files put"_s, {.bar = &progress, .cancel = &m_job.stop});
        if (!look(access))
            return brokenOff(m_job);
        sendAll(access, progress);
        return m_batch.finish();
    });
}

} // namespace

ExitStatus runFilesPut(Job& job)
{
    return Putter(job).run();
}

} // namespace kalmo::cli
