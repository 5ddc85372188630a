#include "app/SafeLocalName.h"
#include "cli/BatchProgress.h"
#include "cli/Commands.h"
#include "cli/DataWork.h"
#include "cli/FileBatch.h"
#include "cli/FolderRows.h"
#include "cli/Tables.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QMap>

namespace kalmo::cli {

using obex::clsMmc;
using obex::tObxDirEntry;

namespace {

/// One file that is wanted, and where it goes.
struct Wanted
{
    PhonePath path;
    QString local = {}; ///< absolute
    QString name = {};  ///< as the phone spells it
    qint64 size = 0;    ///< as the phone says
    QDateTime modified = {};
    ExitStatus status = {}; ///< other than ExitDone where it can't be had
    QString error = {};
};

QJsonObject resultOf(const Wanted& file, bool isSaved)
{
    return {{u"name"_s, file.path.name()},
            {u"path"_s, file.path.shown()},
            {u"size"_s, isSaved ? QJsonValue(QFileInfo(file.local).size()) : QJsonValue()},
            {u"saved"_s, isSaved ? QJsonValue(file.local) : QJsonValue()}};
}

class Getter
{
public:
    Getter(Job& job, const QDir& target) : m_job(job), m_batch(job), m_target(target) {}

    ExitStatus run();

private:
    Wanted plan(const QString& word);
    void look(clsMmc& client);
    void getAll(clsMmc& client);
    bool getOne(clsMmc& client, Wanted& file, BatchProgress& progress);

    Job& m_job;
    FileBatch m_batch;
    QDir m_target;
    QStringList m_taken; // local paths that a file goes to
    std::vector<Wanted> m_files;
};

Wanted Getter::plan(const QString& word)
{
    Wanted file{.path = PhonePath(word)};
    const QString shown = printable(file.path.shown());
    const auto refuse = [&](ExitStatus status, const QString& error) {
        file.status = status;
        file.error = error;
        return file;
    };
    const QString name = app::safeLocalName(file.path.name());
    if (name.isEmpty())
        return refuse(ExitWrongUse, u"%1 can't be the name of a file here"_s.arg(shown));
    file.local = m_target.absoluteFilePath(name);
    const QFileInfo log(m_job.context.sy.logPath);
    if (log.exists() && QFileInfo(file.local).canonicalFilePath() == log.canonicalFilePath())
        return refuse(ExitWrongUse, u"%1 is the log"_s.arg(file.local));
    if (m_taken.contains(file.local))
        return refuse(ExitWrongUse,
                      u"%1 would replace another one of these files, %2"_s.arg(shown, file.local));
    if (QFileInfo(file.local).isDir())
        return refuse(ExitWrongUse, u"%1 is a folder here"_s.arg(file.local));
    if (QFileInfo::exists(file.local) && !m_job.questions.confirm(u"Replace %1?"_s.arg(file.local)))
        return refuse(ExitRefused, u"%1 stays as it is"_s.arg(file.local));
    m_taken.append(file.local);
    return file;
}

/// Finds the files in the listings of their folders.
void Getter::look(clsMmc& client)
{
    QMap<QString, std::optional<QList<tObxDirEntry>>> listings; // nothing where the phone gave none
    for (Wanted& file : m_files) {
        if (file.status != ExitDone || !m_batch.goesOn())
            continue;
        const PhonePath folder = file.path.folder();
        if (!listings.contains(folder.shown())) {
            m_job.progress.phase(u"Listing %1"_s.arg(folder.shown()));
            QList<tObxDirEntry> listing;
            const bool isListed = enterFolder(client, folder) && client.Dir(listing, {.cancel = &m_job.stop});
            listings[folder.shown()] = isListed ? std::optional(listing) : std::nullopt;
        }
        const auto& listing = listings[folder.shown()];
        if (!listing) {
            file.status = ExitFailed;
            file.error =
                u"%1 can't be had: its folder could not be listed"_s.arg(printable(file.path.shown()));
            continue;
        }
        const tObxDirEntry* entry = findEntry(*listing, file.path.name());
        if (entry && entry->isFile()) {
            file.name = entry->name;
            file.size = entry->size;
            file.modified = entry->modified;
            continue;
        }
        file.status = ExitFailed;
        file.error = entry ? u"%1 is a folder"_s.arg(printable(file.path.shown()))
                           : u"there is no %1 in the phone"_s.arg(printable(file.path.shown()));
    }
}

/// Gets a file and saves it, if it came as large as the phone lists it.
bool Getter::getOne(clsMmc& client, Wanted& file, BatchProgress& progress)
{
    file.error = u"%1 was not got"_s.arg(printable(file.path.shown()));
    if (!enterFolder(client, file.path.folder()))
        return false;
    QByteArray bytes;
    if (!client.GetFile(file.name, bytes, {.bar = &progress, .cancel = &m_job.stop}))
        return false;
    if (obex::isWhole(bytes.size(), file.size))
        return client.SaveFile(bytes, file.local, file.modified);
    file.error += u": the phone lists %1 bytes, but sent %2"_s.arg(file.size).arg(bytes.size());
    return false;
}

void Getter::getAll(clsMmc& client)
{
    qint64 total = 0;
    qsizetype count = 0;
    for (const Wanted& file : m_files) {
        total += file.size;
        count += file.status == ExitDone;
    }
    BatchProgress progress(m_job.out, m_job.context.clock, u"Getting"_s, count, total);
    const QObject lifetime; // of the connection
    QObject::connect(&client, &clsMmc::BytesRxed, &lifetime, [&](qint64 bytes) { progress.setBytes(bytes); });
    for (Wanted& file : m_files) {
        if (!m_batch.goesOn()) {
            m_batch.failed(resultOf(file, false), ExitFailed,
                           u"%1 was not got"_s.arg(printable(file.path.shown())));
            continue;
        }
        if (file.status != ExitDone) {
            m_batch.failed(resultOf(file, false), file.status, file.error);
            continue;
        }
        progress.next(file.path.name(), file.size);
        if (getOne(client, file, progress))
            m_batch.done(resultOf(file, true),
                         u"%1 saved in %2"_s.arg(printable(file.path.shown()), file.local));
        else
            m_batch.failed(resultOf(file, false), ExitFailed, file.error);
    }
}

ExitStatus Getter::run()
{
    bool isAnyPossible = false;
    for (const QString& word : m_job.invocation.arguments) {
        m_files.push_back(plan(word));
        isAnyPossible = isAnyPossible || m_files.back().status == ExitDone;
    }
    if (!isAnyPossible) {
        for (const Wanted& file : m_files)
            m_batch.failed(resultOf(file, false), file.status, file.error);
        return m_batch.finish();
    }
    return withDataChannel(m_job, [&](const std::shared_ptr<clsMmc>& client) {
        look(*client);
        getAll(*client);
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
