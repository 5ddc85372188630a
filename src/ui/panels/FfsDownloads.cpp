// The file system panel's downloads.

#include "app/SafeLocalName.h"
#include "obex/clsMmcOperation.h"
#include "operations/FetchFiles.h"
#include "ui/panels/BatchDisplay.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FileBoxes.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using operations::FetchedFile;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileToFetch;
using toolkit::Answer;
using toolkit::Icon;

namespace {

enum class Step { Done, LeftOut, Failed };

class Downloader
{
public:
    Downloader(FileAccess& access, BatchDisplay& display, const QString& folder, OnSaved onSaved)
        : m_access(access), m_display(display), m_folder(folder), m_onSaved(std::move(onSaved))
    {
    }

    /// Finds the files and asks about those that would be replaced here. False if the user cancels.
    bool prepare(std::vector<FileToFetch>& files);
    void run(const std::vector<FileToFetch>& files);

    QStringList done;
    QStringList notDone;
    QStringList impossible; ///< names that this computer doesn't take
    QStringList gone;       ///< the phone no longer lists them, or lists a folder
    qsizetype leftOut = 0;  ///< the user keeps what is here
    int failure = 0;        ///< code of the request that failed first
    qint64 bytes = 0;
    double seconds = 0;
    bool hasFailed = false;

private:
    Step download(const FileToFetch& file);
    QString targetOf(const FileToFetch& file) const;
    bool isWanted(const FileToFetch& file, const FetchedFile& fetched);
    void expectAll(const std::vector<FileToFetch>& files);

    clsMmc& client() { return m_access.client(); }

    FileAccess& m_access;
    BatchDisplay& m_display;
    QString m_folder;
    OnSaved m_onSaved;
};

QString Downloader::targetOf(const FileToFetch& file) const
{
    return QDir(m_folder).filePath(app::safeLocalName(file.path.name()));
}

bool Downloader::prepare(std::vector<FileToFetch>& files)
{
    for (FileToFetch& file : files) {
        if (app::safeLocalName(file.path.name()).isEmpty())
            file.obstacle = FileObstacle::BadName;
    }
    operations::findFiles(m_access, files);
    const auto isUnlisted = [](const FileToFetch& file) {
        return file.obstacle == FileObstacle::FolderNotListed;
    };
    if (std::ranges::any_of(files, isUnlisted) && !obex::isSuccess(client().lastCode()))
        failure = client().lastCode();
    for (FileToFetch& file : files) {
        const QString target = targetOf(file);
        if (file.obstacle != FileObstacle::None || !QFileInfo::exists(target))
            continue;
        const Answer answer = askToReplace(
            client(), u"Die Datei \"%1\" ist im Ordner %2 schon vorhanden.\nDatei überschreiben?"_s.arg(
                          QFileInfo(target).fileName(), QDir::toNativeSeparators(m_folder)));
        if (answer == Answer::Cancel)
            return false;
        if (answer == Answer::No)
            file.obstacle = FileObstacle::Kept;
    }
    return true;
}

/// Returns true if the bytes are to be saved: as many as the phone lists, or as the user wants to have in
/// spite of that.
bool Downloader::isWanted(const FileToFetch& file, const FetchedFile& fetched)
{
    return fetched.isWhole ||
           askToTakePart(client(), {file.path.name(), file.entry->size, fetched.bytes.size()},
                         u"gespeichert"_s);
}

Step Downloader::download(const FileToFetch& file)
{
    const FetchedFile fetched = operations::fetchFile(m_access, file);
    if (!fetched.outcome.isConfirmed) {
        failure = fetched.outcome.code;
        return Step::Failed;
    }
    const bool wanted = isWanted(file, fetched);
    const QString target = targetOf(file);
    if (wanted && client().SaveFile(fetched.bytes, target, file.entry->modified)) {
        bytes += fetched.bytes.size();
        m_onSaved(file.path, fetched.bytes.size(), target);
        return Step::Done;
    }
    if (wanted)
        failure = client().lastCode();
    return wanted ? Step::Failed : Step::LeftOut;
}

void Downloader::expectAll(const std::vector<FileToFetch>& files)
{
    qsizetype count = 0;
    qint64 total = 0;
    for (const FileToFetch& file : files) {
        count += file.obstacle == FileObstacle::None;
        total += file.obstacle == FileObstacle::None ? file.entry->size : 0;
    }
    m_display.expect(count, total);
}

void Downloader::run(const std::vector<FileToFetch>& files)
{
    expectAll(files);
    for (const FileToFetch& file : files) {
        const QString name = file.path.name();
        if (file.obstacle == FileObstacle::BadName) {
            impossible.append(name);
            continue;
        }
        if (file.obstacle == FileObstacle::NotThere || file.obstacle == FileObstacle::IsFolder) {
            gone.append(name);
            continue;
        }
        Step step = file.obstacle == FileObstacle::Kept ? Step::LeftOut : Step::Failed;
        if (file.obstacle == FileObstacle::None && !hasFailed && m_access.goesOn()) {
            m_display.next(file.entry->size);
            step = download(file);
        }
        if (step == Step::LeftOut)
            ++leftOut;
        else
            (step == Step::Done ? done : notDone).append(name);
        hasFailed = hasFailed || step == Step::Failed;
    }
    seconds = m_display.seconds();
}

/// The place goes after the verb, unless the user need not know it.
BatchResult resultOf(const Downloader& downloader, const LocalFolder& folder)
{
    return {.verb = folder.isScratch ? u"empfangen"_s : u"gespeichert"_s,
            .files = downloader.done,
            .leftOut = downloader.leftOut + downloader.impossible.size(),
            .notDone = downloader.notDone.size() + downloader.gone.size(),
            .bytes = downloader.bytes,
            .seconds = downloader.seconds,
            .place = folder.isScratch ? QString() : u" im Ordner "_s + QDir::toNativeSeparators(folder.path)};
}

/// The user's own wish is no failure.
BatchReport reportOf(const Downloader& downloader, const BatchResult& result, qsizetype files)
{
    BatchReport report;
    const bool isFailure = !result.isStopped && !downloader.notDone.isEmpty();
    if (isFailure)
        report.failure = downloader.failure == 0 ? obex::Timeout : downloader.failure;
    const QStringList others =
        titled(u"Nicht mehr im Telefon vorhanden, bitte laden Sie das Verzeichnis neu:"_s, downloader.gone) +
        titled(u"Nicht gespeichert, weil Dateien auf diesem Computer nicht so heißen können:"_s,
               downloader.impossible);
    if (files > 1 && (isFailure || !others.isEmpty())) {
        const QString verb = result.verb + result.place;
        report.paragraphs += titled(verb.first(1).toUpper() + verb.mid(1) + u':', downloader.done);
        if (isFailure)
            report.paragraphs += titled(u"Nicht %1:"_s.arg(result.verb), downloader.notDone);
    }
    report.paragraphs += others;
    return report;
}

} // namespace

void downloadFiles(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& from, const QStringList& names, const LocalFolder& folder,
                   const OnSaved& onSaved)
{
    if (names.isEmpty())
        return;
    BatchDisplay display(progress, mmc->line().context().clock);
    FileAccess access(mmc, u"Download"_s, display.progress());
    if (!access.mayBegin())
        return;
    std::vector<FileToFetch> files;
    for (const QString& name : names)
        files.push_back({.path = from.below(name)});
    Downloader downloader(access, display, folder.path, onSaved);
    {
        const clsMmc::Quiet quiet(*mmc); // one box at the end reports all
        if (!downloader.prepare(files)) {
            progress.status(u"Nichts gespeichert."_s);
            return;
        }
        const ReceivedBytes received(*mmc, display);
        downloader.run(files);
    }
    BatchResult result = resultOf(downloader, folder);
    result.isStopped = access.isStopped();
    tellReport(*mmc, reportOf(downloader, result, names.size()));
    progress.status(sentenceOf(result));
}

} // namespace kalmo::ui
