// kalmoctl files get: saves files of the phone.

#include "app/SafeLocalName.h"
#include "cli/BatchProgress.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FileWords.h"
#include "cli/Tables.h"
#include "operations/FetchFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using obex::clsMmc;
using operations::FetchedFile;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileToFetch;

namespace {

/// The place here of one file that is wanted.
struct LocalPlace
{
    QString path = {};      ///< absolute
    ExitStatus status = {}; ///< other than ExitDone where the file can't be saved there
    QString error = {};
};

class Getter
{
public:
    Getter(Job& job, const QDir& target) : m_job(job), m_batch(job), m_target(target) {}

    ExitStatus run();

private:
    LocalPlace placeFor(const PhonePath& path);
    QJsonObject resultOf(size_t index, bool isSaved) const;
    void getAll(FileAccess& access, BatchProgress& progress);
    void getOne(FileAccess& access, size_t index);

    Job& m_job;
    FileBatch m_batch;
    QDir m_target;
    QStringList m_taken; // local paths that a file goes to
    std::vector<FileToFetch> m_files;
    std::vector<LocalPlace> m_places; // of the same files
};

LocalPlace Getter::placeFor(const PhonePath& path)
{
    const QString shown = printable(path.shown());
    const QString name = app::safeLocalName(path.name());
    if (name.isEmpty())
        return {{}, ExitWrongUse, u"%1 can't be the name of a file here"_s.arg(shown)};
    LocalPlace place{.path = m_target.absoluteFilePath(name)};
    const auto refuse = [&](ExitStatus status, const QString& error) {
        place.status = status;
        place.error = error;
        return place;
    };
    const QFileInfo log(m_job.context.sy.logPath);
    if (log.exists() && QFileInfo(place.path).canonicalFilePath() == log.canonicalFilePath())
        return refuse(ExitWrongUse, u"%1 is the log"_s.arg(place.path));
    if (m_taken.contains(place.path))
        return refuse(ExitWrongUse,
                      u"%1 would replace another one of these files, %2"_s.arg(shown, place.path));
    if (QFileInfo(place.path).isDir())
        return refuse(ExitWrongUse, u"%1 is a folder here"_s.arg(place.path));
    if (QFileInfo::exists(place.path) && !m_job.questions.confirm(u"Replace %1?"_s.arg(place.path)))
        return refuse(ExitRefused, u"%1 stays as it is"_s.arg(place.path));
    m_taken.append(place.path);
    return place;
}

QJsonObject Getter::resultOf(size_t index, bool isSaved) const
{
    const PhonePath& path = m_files[index].path;
    const QString& local = m_places[index].path;
    return {{u"name"_s, path.name()},
            {u"path"_s, path.shown()},
            {u"size"_s, isSaved ? QJsonValue(QFileInfo(local).size()) : QJsonValue()},
            {u"saved"_s, isSaved ? QJsonValue(local) : QJsonValue()}};
}

/// Fetches a file and saves it, if as many bytes came as the phone lists.
void Getter::getOne(FileAccess& access, size_t index)
{
    const FileToFetch& file = m_files[index];
    const QString shown = printable(file.path.shown());
    const FetchedFile fetched = operations::fetchFile(access, file);
    if (fetched.isWhole &&
        access.client().SaveFile(fetched.bytes, m_places[index].path, file.entry->modified)) {
        m_batch.done(resultOf(index, true), u"%1 saved in %2"_s.arg(shown, m_places[index].path));
        return;
    }
    QString reason = reasonText(fetched.isWhole ? access.cause() : fetched.outcome.cause);
    if (fetched.isWhole)
        reason = u"it could not be saved here"_s;
    else if (fetched.outcome.isConfirmed)
        reason = u"the phone lists %1 bytes, but sent %2"_s.arg(file.entry->size).arg(fetched.bytes.size());
    m_batch.failed(resultOf(index, false), ExitFailed, u"could not fetch %1: %2"_s.arg(shown, reason));
}

void Getter::getAll(FileAccess& access, BatchProgress& progress)
{
    qint64 total = 0;
    qsizetype count = 0;
    for (const FileToFetch& file : m_files) {
        total += file.entry ? file.entry->size : 0;
        count += file.entry.has_value();
    }
    progress.expect(count, total);
    for (size_t index = 0; index < m_files.size(); ++index) {
        const FileToFetch& file = m_files[index];
        const QString shown = printable(file.path.shown());
        if (m_places[index].status != ExitDone) {
            m_batch.failed(resultOf(index, false), m_places[index].status, m_places[index].error);
        } else if (file.obstacle != FileObstacle::None) {
            m_batch.failed(resultOf(index, false), statusOf(file.obstacle),
                           obstacleText(file.obstacle, shown));
        } else if (!access.goesOn()) {
            const auto cause = access.isStopped() ? operations::Cause::Interrupted : access.cause();
            m_batch.failed(resultOf(index, false), ExitFailed,
                           u"could not fetch %1: %2"_s.arg(shown, reasonText(cause)));
        } else {
            progress.next(file.path.name(), file.entry->size);
            getOne(access, index);
        }
    }
}

ExitStatus Getter::run()
{
    for (const QString& word : m_job.invocation.arguments) {
        m_files.push_back({.path = PhonePath(word)});
        m_places.push_back(placeFor(m_files.back().path));
        if (m_places.back().status != ExitDone)
            m_files.back().obstacle = FileObstacle::Kept; // not looked for
    }
    const bool isAnyPossible = std::any_of(m_places.begin(), m_places.end(),
                                           [](const LocalPlace& place) { return place.status == ExitDone; });
    if (!isAnyPossible) {
        for (size_t index = 0; index < m_files.size(); ++index)
            m_batch.failed(resultOf(index, false), m_places[index].status, m_places[index].error);
        return m_batch.finish();
    }
    return withDataChannel(m_job, Intent::Reads, [&](const std::shared_ptr<clsMmc>& client) {
        BatchProgress progress(m_job.out, m_job.context.clock, u"Fetching"_s);
        FileAccess access(client, u"files get"_s, {.bar = &progress, .cancel = &m_job.stop});
        const QObject lifetime; // of the connection
        QObject::connect(client.get(), &clsMmc::BytesRxed, &lifetime,
                         [&](qint64 bytes) { progress.setBytes(bytes); });
        m_job.progress.phase(u"Listing the phone's folders"_s);
        operations::findFiles(access, m_files);
        getAll(access, progress);
        return m_batch.finish();
    });
}

} // namespace

ExitStatus runFilesGet(Job& job)
{
    const QString folder = job.invocation.value(u"--output"_s);
    if (!folder.isEmpty() && !QFileInfo(folder).isDir()) {
        job.out.error(u"%1 is no folder."_s.arg(folder));
        return ExitWrongUse;
    }
    return Getter(job, QDir(folder.isEmpty() ? u"."_s : folder)).run();
}

} // namespace kalmo::cli
