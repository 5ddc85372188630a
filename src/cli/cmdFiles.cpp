// kalmoctl files: what is done to the phone's files and folders where they are.

#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FileWords.h"
#include "cli/FolderRows.h"
#include "cli/Tables.h"
#include "operations/DeleteFiles.h"
#include "operations/FolderChanges.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using obex::tObxDirEntry;
using operations::Cause;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::FileToDelete;
using operations::State;

namespace {

/// Work with the files of a phone that is to be found.
ExitStatus withFiles(Job& job, Intent intent, const QString& phase,
                     const std::function<ExitStatus(FileAccess&)>& work)
{
    return withDataChannel(job, intent, [&](const std::shared_ptr<obex::clsMmc>& client) {
        FileAccess access(client, job.invocation.command->words.toString(), {.cancel = &job.stop});
        job.progress.phase(phase);
        const ExitStatus status = work(access);
        job.progress.clear();
        if (access.isRecordOpen())
            job.out.note(openRecordText());
        return status;
    });
}

/// Exit status of a command that failed or was interrupted before anything was changed.
ExitStatus undone(Job& job, const QString& error)
{
    job.progress.clear();
    if (!job.stop.Checked())
        job.out.error(printable(error) + u'.');
    return brokenOff(job);
}

/// Reports an obstacle, if there is one.
bool isRefused(Job& job, FileObstacle obstacle, const PhonePath& path, ExitStatus& status)
{
    if (obstacle == FileObstacle::None)
        return false;
    job.progress.clear();
    const QString shown = printable(path.shown());
    job.out.error(obstacleText(obstacle, shown, shown) + u'.');
    status = statusOf(obstacle);
    return true;
}

/// Shows the result of one change: the value with the state, then the note or what failed.
ExitStatus finished(Job& job, QJsonObject value, const FileOutcome& outcome, const QString& text,
                    const QString& couldNot, const QString& unknown)
{
    job.progress.clear();
    value[u"state"_s] = operations::wordOf(outcome.state);
    const bool isDone = outcome.state == State::Done;
    if (isDone || job.out.isJson())
        job.out.show(value, text);
    if (!isDone)
        job.out.error(failureText(couldNot, outcome, unknown) + u'.');
    if (job.stop.Checked() && !isDone)
        return brokenOff(job);
    return isDone ? ExitDone : ExitFailed;
}

QString deleteFailure(const Job& job, const FileToDelete& file, const FileOutcome& outcome)
{
    const QString shown = printable(file.path.shown());
    const QString couldNot = u"could not delete %1"_s.arg(shown);
    if (outcome.cause == Cause::PhoneRefused && !job.invocation.has(u"--force"_s))
        return couldNot + u": the phone refused; --force deletes what is protected, too"_s;
    if (outcome.cause == Cause::Mismatch && outcome.isConfirmed)
        return couldNot + u": the phone said yes, but it is still there"_s;
    return failureText(couldNot, outcome, u"it is not known whether it is gone"_s);
}

ExitStatus removeAll(Job& job, FileAccess& access, std::vector<FileToDelete> files)
{
    FileBatch batch(job);
    operations::lookBeforeDeleting(access, files);
    const operations::DeletePolicy policy{.force = job.invocation.has(u"--force"_s)};
    const auto phase = [&](const QString& verb) {
        return [&job, verb](const FileToDelete& file) {
            job.progress.phase(verb.arg(printable(file.path.shown())));
        };
    };
    const auto report = [&](const FileToDelete& file, const FileOutcome& outcome) {
        const QString shown = printable(file.path.shown());
        const bool isGone = outcome.state == State::Done;
        const QJsonObject result{{u"path"_s, file.path.shown()},
                                 {u"deleted"_s, isGone},
                                 {u"state"_s, operations::wordOf(outcome.state)}};
        if (isGone)
            batch.done(result, u"%1 deleted"_s.arg(shown));
        else if (file.obstacle != FileObstacle::None)
            batch.failed(result, statusOf(file.obstacle), obstacleText(file.obstacle, shown));
        else
            batch.failed(result, ExitFailed, deleteFailure(job, file, outcome));
    };
    const auto mayLose = [&](const QStringList& names) {
        job.progress.clear();
        return job.questions.confirm(
            u"The phone does not give %1, so it can't be put back later. Delete it all the same?"_s.arg(
                printable(names.join(u", "_s))));
    };
    operations::applyDelete(access, files, policy,
                            {.saving = phase(u"Saving %1"_s),
                             .deleting = phase(u"Deleting %1"_s),
                             .finished = report,
                             .mayLose = mayLose});
    return batch.finish();
}

} // namespace

ExitStatus runFilesLs(Job& job)
{
    const PhonePath folder(job.invocation.arguments.value(0));
    return withFiles(job, Intent::Reads, u"Listing %1"_s.arg(folder.shown()), [&](FileAccess& access) {
        const auto entries = access.list(folder);
        if (!entries)
            return undone(job, u"could not list %1"_s.arg(folder.shown()));
        job.progress.clear();
        job.out.show(filesJson(*entries), filesTable(*entries));
        return ExitDone;
    });
}

ExitStatus runFilesRm(Job& job)
{
    std::vector<PhonePath> paths;
    for (const QString& word : job.invocation.arguments)
        paths.push_back(PhonePath(word));
    const std::vector<FileToDelete> files = operations::planDelete(paths);
    ExitStatus status = ExitDone;
    for (const FileToDelete& file : files) {
        if (isRefused(job, file.obstacle, file.path, status))
            return status;
    }
    const QString what =
        files.size() == 1 ? printable(paths.front().shown()) : u"%1 files or folders"_s.arg(files.size());
    if (!job.questions.confirm(u"Delete %1 in the phone?"_s.arg(what)))
        return ExitRefused;
    return withFiles(job, Intent::Changes, u"Listing the phone's folders"_s,
                     [&](FileAccess& access) { return removeAll(job, access, files); });
}

ExitStatus runFilesMkdir(Job& job)
{
    operations::NewFolder plan = operations::planNewFolder(PhonePath(job.invocation.arguments.first()));
    const QString shown = plan.path.shown();
    const QString couldNot = u"could not make %1"_s.arg(shown);
    ExitStatus status = ExitDone;
    if (isRefused(job, plan.obstacle, plan.path, status))
        return status;
    return withFiles(job, Intent::Changes, u"Making %1"_s.arg(shown), [&](FileAccess& access) {
        if (!operations::lookBeforeMaking(access, plan))
            return undone(job, couldNot);
        if (isRefused(job, plan.obstacle, plan.path, status))
            return status;
        const FileOutcome outcome = operations::applyNewFolder(access, plan);
        return finished(job, {{u"path"_s, shown}}, outcome, u"%1 is there.\n"_s.arg(printable(shown)),
                        printable(couldNot),
                        outcome.mayHoldPart ? u"some of the folders above it are there"_s
                                            : u"it is not known whether it is there"_s);
    });
}

ExitStatus runFilesMv(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    const PhonePath from(words[0]);
    const PhonePath to = endsInSlash(words[1]) ? PhonePath(words[1]).below(from.name()) : PhonePath(words[1]);
    operations::Move plan = operations::planMove(from, to);
    const auto blamed = [&] {
        const bool isTarget = plan.obstacle == FileObstacle::IsThere ||
                              plan.obstacle == FileObstacle::OtherName ||
                              plan.obstacle == FileObstacle::BadName;
        return isTarget || (plan.obstacle == FileObstacle::BelowTelecom && to.isTelecom()) ? to : from;
    };
    const QString couldNot = u"could not move %1 to %2"_s.arg(from.shown(), to.shown());
    ExitStatus status = ExitDone;
    if (isRefused(job, plan.obstacle, blamed(), status))
        return status;
    return withFiles(job, Intent::Changes, u"Moving %1"_s.arg(from.shown()), [&](FileAccess& access) {
        if (!operations::lookBeforeMoving(access, plan))
            return undone(job, couldNot);
        if (isRefused(job, plan.obstacle, blamed(), status))
            return status;
        return finished(job, {{u"from"_s, from.shown()}, {u"to"_s, to.shown()}},
                        operations::applyMove(access, plan),
                        u"%1 is %2 now.\n"_s.arg(printable(from.shown()), printable(to.shown())),
                        printable(couldNot), u"it is not known which of the two is there"_s);
    });
}

ExitStatus runFilesDf(Job& job)
{
    return withFiles(job, Intent::Reads, u"Asking for the room"_s, [&](FileAccess& access) {
        qint32 total = 0;
        qint32 free = 0;
        if (!access.client().GetSpaceFree(free, access.progress()) ||
            !access.client().GetSpaceTotal(total, access.progress()))
            return undone(job, u"could not learn how much room the phone has"_s);
        job.progress.clear();
        job.out.show(
            QJsonObject{{u"total"_s, total}, {u"free"_s, free}},
            alignedFields({{u"Total"_s, u"%1 bytes"_s.arg(total)}, {u"Free"_s, u"%1 bytes"_s.arg(free)}}));
        return ExitDone;
    });
}

ExitStatus runFilesAttr(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    const auto wanted = words[1] == u"ro"_s ? operations::Rights::ReadOnly : operations::Rights::All;
    operations::RightsChange plan = operations::planRights(PhonePath(words[0]), wanted);
    const QString couldNot = u"could not change the permissions of %1"_s.arg(plan.path.shown());
    ExitStatus status = ExitDone;
    if (isRefused(job, plan.obstacle, plan.path, status))
        return status;
    return withFiles(job, Intent::Changes, u"Changing %1"_s.arg(plan.path.shown()), [&](FileAccess& access) {
        if (!operations::lookBeforeRights(access, plan))
            return undone(job, couldNot);
        if (isRefused(job, plan.obstacle, plan.path, status))
            return status;
        std::optional<tObxDirEntry> after;
        const FileOutcome outcome = operations::applyRights(access, plan, after);
        const tObxDirEntry entry = after.value_or(*plan.before);
        return finished(job, fileJson(entry), outcome, filesTable({entry}), printable(couldNot),
                        u"it is not known which it has"_s);
    });
}

} // namespace kalmo::cli
