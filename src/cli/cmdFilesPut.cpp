#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "cli/BatchProgress.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FolderRows.h"
#include "cli/Tables.h"
#include "phonedata/BackupFiles.h"

#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using obex::clsMmc;
using obex::tObxDirEntry;

namespace {

/// One local file and the place that it goes to.
struct Outgoing
{
    QString local;
    PhonePath path;
    qint64 size = 0;
    std::optional<tObxDirEntry> replaced = {}; ///< the phone's file of that name
    QString backup = {};                       ///< where that one is saved
    ExitStatus status = {};                    ///< other than ExitDone where it can't be sent
    QString error = {};
};

QJsonObject resultOf(const Outgoing& file, bool isWritten)
{
    return {{u"name"_s, file.path.name()},
            {u"path"_s, file.path.shown()},
            {u"size"_s, file.size},
            {u"backup"_s, file.backup.isEmpty() ? QJsonValue() : QJsonValue(file.backup)},
            {u"written"_s, isWritten}};
}

/// What to say of a file that is not in the phone as a whole.
QString unsent(const Outgoing& file, bool mayHoldPart)
{
    const QString shown = printable(file.path.shown());
    const QString text =
        mayHoldPart ? u"%1 was not sent; the phone may hold a part of it as %2"_s.arg(file.local, shown)
                    : u"%1 was not sent"_s.arg(file.local);
    return file.backup.isEmpty() ? text : text + u".\nWhat the phone held before is in %1"_s.arg(file.backup);
}

class Putter
{
public:
    Putter(Job& job, const PhonePath& target) : m_job(job), m_batch(job), m_target(target) {}

    ExitStatus run();

private:
    Outgoing plan(const QString& word);
    bool look(clsMmc& client);
    void backUp(clsMmc& client, Outgoing& file);
    bool put(clsMmc& client, const Outgoing& file, BatchProgress& progress, bool& mayHoldPart);
    void putAll(clsMmc& client);

    Job& m_job;
    FileBatch m_batch;
    PhonePath m_target;
    std::vector<Outgoing> m_files;
};

Outgoing Putter::plan(const QString& word)
{
    const QFileInfo info(word);
    QString name = info.fileName();
    name.remove(u',').remove(u';'); // as the engine sends it
    Outgoing file{.local = info.absoluteFilePath(), .path = m_target.below(name), .size = info.size()};
    const bool isTwin = std::any_of(m_files.begin(), m_files.end(), [&](const Outgoing& other) {
        return other.status == ExitDone && other.path.name().compare(name, Qt::CaseInsensitive) == 0;
    });
    if (!app::FileExists(word))
        file.error = u"there is no file %1"_s.arg(word);
    else if (file.size > obex::largestObject)
        file.error = u"%1 is larger than any phone takes"_s.arg(word);
    else if (!info.isReadable())
        file.error = u"%1 can't be read"_s.arg(word);
    else if (name.isEmpty())
        file.error = u"nothing is left of the name %1 without its commas and semicolons"_s.arg(word);
    else if (name.contains(u'\\') || name.contains(u'/'))
        file.error = u"%1 can't be the name of a file in the phone"_s.arg(name);
    else if (!file.path.canBeMade())
        file.error = u"%1 holds a letter that no name in the phone can have"_s.arg(file.path.shown());
    else if (isTwin)
        file.error = u"%1 would replace another one of these files, %2"_s.arg(word, file.path.shown());
    file.status = file.error.isEmpty() ? ExitDone : ExitWrongUse;
    return file;
}

/// Looks what would be replaced in the phone, and asks. False if the folder could not be listed.
bool Putter::look(clsMmc& client)
{
    m_job.progress.phase(u"Listing %1"_s.arg(m_target.shown()));
    QList<tObxDirEntry> entries;
    if (!enterFolder(client, m_target) || !client.Dir(entries, {.cancel = &m_job.stop}))
        return false;
    m_job.progress.clear();
    for (Outgoing& file : m_files) {
        const tObxDirEntry* there = findEntry(entries, file.path.name());
        if (file.status != ExitDone || !there)
            continue;
        const QString shown = printable(file.path.shown());
        if (!there->isFile()) {
            file.status = ExitFailed;
            file.error = u"%1 is a folder in the phone"_s.arg(shown);
        } else if (!m_job.questions.confirm(u"Replace %1 in the phone?"_s.arg(shown))) {
            file.status = ExitRefused;
            file.error = u"%1 stays as it is"_s.arg(shown);
        } else {
            file.replaced = *there;
        }
    }
    return true;
}

/// Saves the phone's file that is about to be replaced: it may be the only copy. Without that, or with less
/// than the phone lists, the file is not sent.
void Putter::backUp(clsMmc& client, Outgoing& file)
{
    const QString name = file.replaced->name;
    m_job.progress.phase(u"Saving %1"_s.arg(printable(name)));
    const QString safeName = app::safeLocalName(name);
    const QFileInfo info(safeName.isEmpty() ? u"file"_s : safeName);
    const QString ending = info.suffix().isEmpty() ? QString() : u'.' + info.suffix();
    const QString path = phonedata::backupPath(m_job.context, info.completeBaseName() + u' ', ending);
    QByteArray bytes;
    const bool isRead = client.GetFile(name, bytes, {.bar = &m_job.progress, .cancel = &m_job.stop});
    m_job.progress.clear();
    if (isRead && obex::isWhole(bytes.size(), file.replaced->size) &&
        client.SaveFile(bytes, path, file.replaced->modified)) {
        file.backup = path;
        m_job.out.note(u"What the phone held as %1 is saved in %2.\n"_s.arg(printable(name), path));
        return;
    }
    file.status = ExitFailed;
    file.error =
        u"%1 could not be saved as a whole, so it was not replaced"_s.arg(printable(file.path.shown()));
}

/// Sends a file. One that replaces another is there only when the phone lists it with its size, if it lists
/// sizes at all.
bool Putter::put(clsMmc& client, const Outgoing& file, BatchProgress& progress, bool& mayHoldPart)
{
    clsMmc::PutObject object{.name = file.path.name(), .bytes = {}, .modified = {}};
    clsMmc::PutReport report;
    if (!app::readWholeFile(file.local, object.bytes) ||
        !client.PutBytes(object, {.bar = &progress, .cancel = &m_job.stop}, &report)) {
        mayHoldPart = report.mayHoldPart;
        return false;
    }
    mayHoldPart = true;
    QList<tObxDirEntry> entries;
    if (!file.replaced)
        return true;
    if (!client.Dir(entries, {}))
        return false;
    const tObxDirEntry* there = findEntry(entries, file.path.name());
    return there && there->isFile() &&
           (there->size == file.size || (there->size == 0 && file.replaced->size == 0));
}

void Putter::putAll(clsMmc& client)
{
    for (Outgoing& file : m_files) {
        if (file.replaced && m_batch.goesOn())
            backUp(client, file);
    }
    qint64 total = 0;
    qsizetype count = 0;
    for (const Outgoing& file : m_files) {
        total += file.status == ExitDone ? file.size : 0;
        count += file.status == ExitDone;
    }
    BatchProgress progress(m_job.out, m_job.context.clock, u"Sending"_s, count, total);
    for (const Outgoing& file : m_files) {
        if (!m_batch.goesOn()) {
            m_batch.failed(resultOf(file, false), ExitFailed, u"%1 was not sent"_s.arg(file.local));
            continue;
        }
        if (file.status != ExitDone) {
            m_batch.failed(resultOf(file, false), file.status, file.error);
            continue;
        }
        progress.next(file.path.name(), file.size);
        bool mayHoldPart = false;
        if (put(client, file, progress, mayHoldPart))
            m_batch.done(resultOf(file, true),
                         u"%1 sent to %2"_s.arg(file.local, printable(file.path.shown())));
        else
            m_batch.failed(resultOf(file, false), ExitFailed, unsent(file, mayHoldPart));
    }
}

ExitStatus Putter::run()
{
    bool isAnyPossible = false;
    for (const QString& word : m_job.invocation.arguments) {
        m_files.push_back(plan(word));
        isAnyPossible = isAnyPossible || m_files.back().status == ExitDone;
    }
    if (!isAnyPossible) {
        for (const Outgoing& file : m_files)
            m_batch.failed(resultOf(file, false), file.status, file.error);
        return m_batch.finish();
    }
    return withDataChannel(m_job, [&](const std::shared_ptr<clsMmc>& client) {
        if (!look(*client))
            return brokenOff(m_job);
        putAll(*client);
        return m_batch.finish();
    });
}

} // namespace

ExitStatus runFilesPut(Job& job)
{
    return Putter(job, PhonePath(job.invocation.value(u"--to"_s))).run();
}

} // namespace kalmo::cli
