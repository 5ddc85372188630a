// What is done to the phone's files and folders where they are.

#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FolderRows.h"
#include "cli/Tables.h"

#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using obex::clsMmc;
using obex::tObxDirEntry;

namespace {

using Client = std::shared_ptr<clsMmc>;

/// Lists the folder that a file or folder is in. False has been told.
bool listFolder(Job& job, clsMmc& client, const PhonePath& folder, QList<tObxDirEntry>& entries)
{
    job.progress.phase(u"Listing %1"_s.arg(folder.shown()));
    return enterFolder(client, folder) && client.Dir(entries, {.cancel = &job.stop});
}

/// How a command ends that the phone or the user broke off: says what was not done.
ExitStatus undone(Job& job, const QString& what)
{
    if (!job.stop.Checked())
        job.out.error(printable(what) + u'.');
    return brokenOff(job);
}

bool isRefusedRoot(Job& job, const PhonePath& path)
{
    if (path.isRoot())
        job.out.error(u"that is the phone's root, which stays as it is."_s);
    return path.isRoot();
}

/// The same for what is to be made.
bool isRefusedTarget(Job& job, const PhonePath& path)
{
    if (!path.canBeMade())
        job.out.error(
            u"%1 holds a letter that no name in the phone can have."_s.arg(printable(path.shown())));
    return !path.canBeMade() || isRefusedRoot(job, path);
}

/// Deletes one; true if it is gone.
bool removeOne(Job& job, clsMmc& client, const PhonePath& path)
{
    job.progress.phase(u"Deleting %1"_s.arg(path.shown()));
    if (!enterFolder(client, path.folder()))
        return false;
    return client.Del(path.name(), {}, nullptr, false, job.invocation.has(u"--force"_s));
}

ExitStatus removeAll(Job& job, clsMmc& client)
{
    ExitStatus worst = ExitDone;
    QJsonArray results;
    QString text;
    for (const QString& word : job.invocation.arguments) {
        const PhonePath path(word);
        if (job.stop.Checked()) {
            worst = brokenOff(job);
            break;
        }
        const bool isGone = removeOne(job, client, path);
        results.append(QJsonObject{{u"path"_s, path.shown()}, {u"deleted"_s, isGone}});
        if (isGone) {
            text += u"%1 deleted.\n"_s.arg(printable(path.shown()));
            continue;
        }
        job.out.error(u"%1 was not deleted."_s.arg(printable(path.shown())));
        worst = std::max(worst, ExitFailed);
    }
    job.progress.clear();
    job.out.show(results, text);
    return worst;
}

} // namespace

ExitStatus runFilesLs(Job& job)
{
    const PhonePath folder(job.invocation.arguments.value(0));
    return withDataChannel(job, [&](const Client& client) {
        QList<tObxDirEntry> entries;
        if (!listFolder(job, *client, folder, entries))
            return undone(job, u"%1 could not be listed"_s.arg(folder.shown()));
        job.progress.clear();
        job.out.show(filesJson(entries), filesTable(entries));
        return ExitDone;
    });
}

ExitStatus runFilesRm(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    for (const QString& word : words) {
        if (isRefusedRoot(job, PhonePath(word)))
            return ExitWrongUse;
    }
    const QString what = words.size() == 1 ? printable(PhonePath(words.first()).shown())
                                           : u"%1 files or folders"_s.arg(words.size());
    if (!job.questions.confirm(u"Delete %1 in the phone? There is no way back."_s.arg(what)))
        return ExitRefused;
    return withDataChannel(job, [&](const Client& client) { return removeAll(job, *client); });
}

ExitStatus runFilesMkdir(Job& job)
{
    const PhonePath path(job.invocation.arguments.first());
    if (isRefusedTarget(job, path))
        return ExitWrongUse;
    return withDataChannel(job, [&](const Client& client) {
        job.progress.phase(u"Making %1"_s.arg(path.shown()));
        if (!enterFolder(*client, PhonePath()) || !client->Cd(path.forEngine(), true))
            return undone(job, u"%1 could not be made"_s.arg(path.shown()));
        job.progress.clear();
        job.out.show(QJsonObject{{u"path"_s, path.shown()}},
                     u"%1 is there.\n"_s.arg(printable(path.shown())));
        return ExitDone;
    });
}

ExitStatus runFilesMv(Job& job)
{
    const QStringList& words = job.invocation.arguments;
    const PhonePath from(words[0]);
    const PhonePath to = endsInSlash(words[1]) ? PhonePath(words[1]).below(from.name()) : PhonePath(words[1]);
    if (isRefusedRoot(job, from) || isRefusedTarget(job, to))
        return ExitWrongUse;
    const QString notMoved = u"%1 was not moved to %2"_s.arg(from.shown(), to.shown());
    return withDataChannel(job, [&](const Client& client) {
        job.progress.phase(u"Moving %1"_s.arg(from.shown()));
        QList<tObxDirEntry> entries;
        if (!listFolder(job, *client, to.folder(), entries))
            return undone(job, notMoved);
        const tObxDirEntry* there = findEntry(entries, to.name());
        const bool isItself = there && there->path.compare(from.forEngine(), Qt::CaseInsensitive) == 0;
        if (there && !isItself) {
            job.out.error(u"there is a %1 in the phone already."_s.arg(printable(to.shown())));
            return ExitFailed;
        }
        if (!client->Rename(from.forEngine(), to.forEngine(), {}))
            return undone(job, notMoved);
        job.progress.clear();
        job.out.show(QJsonObject{{u"from"_s, from.shown()}, {u"to"_s, to.shown()}},
                     u"%1 is %2 now.\n"_s.arg(printable(from.shown()), printable(to.shown())));
        return ExitDone;
    });
}

ExitStatus runFilesDf(Job& job)
{
    return withDataChannel(job, [&](const Client& client) {
        job.progress.phase(u"Asking for the room"_s);
        qint32 total = 0;
        qint32 free = 0;
        if (!client->GetSpaceFree(free, {.cancel = &job.stop}) ||
            !client->GetSpaceTotal(total, {.cancel = &job.stop}))
            return undone(job, u"the phone does not say how much room it has"_s);
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
    const PhonePath path(words[0]);
    if (isRefusedRoot(job, path))
        return ExitWrongUse;
    const QString notChanged = u"the permissions of %1 were not changed"_s.arg(path.shown());
    return withDataChannel(job, [&](const Client& client) {
        QList<tObxDirEntry> entries;
        if (!enterFolder(*client, path.folder()))
            return undone(job, notChanged);
        job.progress.phase(u"Changing %1"_s.arg(path.shown()));
        const bool done = words[1] == u"ro"_s ? client->SetPermissionReadOnly(path.name())
                                              : client->SetPermissionRWD(path.name());
        if (!done)
            return undone(job, notChanged);
        if (!listFolder(job, *client, path.folder(), entries))
            return undone(job, u"%1 was changed, but %2 could not be listed"_s.arg(path.shown(),
                                                                                   path.folder().shown()));
        const tObxDirEntry* entry = findEntry(entries, path.name());
        job.progress.clear();
        if (!entry) {
            job.out.error(u"the phone does not list %1 any more."_s.arg(printable(path.shown())));
            return ExitFailed;
        }
        job.out.show(fileJson(*entry), filesTable({*entry}));
        return ExitDone;
    });
}

} // namespace kalmo::cli
