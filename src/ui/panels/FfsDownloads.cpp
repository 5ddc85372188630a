// The file system panel's downloads.

#include "app/SafeLocalName.h"
#include "operations/FetchFiles.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FileBoxes.h"

#include <QDir>
#include <QFileInfo>

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

/// Names by what came of the files.
struct Sorted
{
    QStringList done;
    QStringList notDone;
    QStringList impossible; ///< names that this computer doesn't take
    bool hasFailed = false;
};

enum class Step { Done, LeftOut, Failed, Cancelled };

class Downloader
{
public:
    Downloader(FileAccess& access, const QString& folder) : m_access(access), m_folder(folder) {}

    Sorted run(std::vector<FileToFetch> files);

private:
    Step download(const FileToFetch& file);
    Step mayReplace(const QString& localName, const QString& target);
    bool isWanted(const FileToFetch& file, const FetchedFile& fetched);

    clsMmc& client() { return m_access.client(); }

    FileAccess& m_access;
    QString m_folder;
};

Step Downloader::mayReplace(const QString& localName, const QString& target)
{
    if (!QFileInfo::exists(target))
        return Step::Done;
    switch (askToReplace(client(),
                         u"Die Datei \"%1\" ist im Ordner %2 schon vorhanden.\nDatei überschreiben?"_s.arg(
                             localName, QDir::toNativeSeparators(m_folder)))) {
    case Answer::Yes:
        return Step::Done;
    case Answer::Cancel:
        return Step::Cancelled;
    default:
        return Step::LeftOut;
    }
}

/// Returns true if the bytes are to be saved: as many as the phone lists, or as the user wants to have in
/// spite of that.
bool Downloader::isWanted(const FileToFetch& file, const FetchedFile& fetched)
{
    return fetched.isWhole ||
           ask(client(),
               u"Die Datei \"%1\" ist nicht vollständig angekommen: Das Telefon gibt %2 Bytes an und "
               u"hat %3 gesendet.\n\nSoll sie trotzdem gespeichert werden?"_s.arg(
                   file.path.name(), QString::number(file.entry->size),
                   QString::number(fetched.bytes.size())));
}

Step Downloader::download(const FileToFetch& file)
{
    const QString localName = app::safeLocalName(file.path.name());
    const QString target = QDir(m_folder).filePath(localName);
    if (const Step step = mayReplace(localName, target); step != Step::Done)
        return step;
    const FetchedFile fetched = operations::fetchFile(m_access, file);
    if (!fetched.outcome.isConfirmed || client().isAbandoned())
        return Step::Failed;
    const bool wanted = isWanted(file, fetched);
    if (wanted && client().SaveFile(fetched.bytes, target, file.entry->modified))
        return Step::Done;
    m_access.progress().status(u"Download "_s + file.path.name() + u" nicht abgeschlossen."_s);
    return wanted ? Step::Failed : Step::LeftOut;
}

Sorted Downloader::run(std::vector<FileToFetch> files)
{
    for (FileToFetch& file : files) {
        if (app::safeLocalName(file.path.name()).isEmpty())
            file.obstacle = FileObstacle::BadName;
    }
    operations::findFiles(m_access, files);
    Sorted sorted;
    bool stops = false;
    for (const FileToFetch& file : files) {
        stops = stops || !m_access.goesOn();
        if (file.obstacle == FileObstacle::BadName) {
            sorted.impossible.append(file.path.name());
            continue;
        }
        Step step = stops ? Step::LeftOut : Step::Failed;
        if (!stops && file.obstacle == FileObstacle::None)
            step = download(file);
        (step == Step::Done ? sorted.done : sorted.notDone).append(file.path.name());
        sorted.hasFailed = sorted.hasFailed || step == Step::Failed;
        stops = stops || step == Step::Failed || step == Step::Cancelled;
    }
    return sorted;
}

QString reportOf(const Sorted& sorted, const QString& folder)
{
    QStringList parts;
    const auto add = [&](const QString& title, const QStringList& names) {
        if (!names.isEmpty())
            parts.append(title + u'\n' + someOf(names));
    };
    add(u"Gespeichert im Ordner %1:"_s.arg(folder), sorted.done);
    add(u"Nicht gespeichert:"_s, sorted.notDone);
    add(u"Nicht gespeichert, weil Dateien auf diesem Computer nicht so heißen können:"_s, sorted.impossible);
    return parts.join(u"\n\n"_s);
}

} // namespace

bool downloadFiles(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress,
                   const obex::PhonePath& from, const QStringList& names, const QString& folder)
{
    if (names.isEmpty())
        return false;
    FileAccess access(mmc, u"Download"_s, progress);
    if (!access.mayBegin())
        return false;
    std::vector<FileToFetch> files;
    for (const QString& name : names)
        files.push_back({.path = from.below(name)});
    const Sorted sorted = Downloader(access, folder).run(files);
    const QString folderShown = QDir::toNativeSeparators(folder);
    const bool isPlain = sorted.impossible.isEmpty() && (names.size() == 1 || sorted.notDone.isEmpty());
    if (!isPlain)
        tell(*mmc, reportOf(sorted, folderShown), Icon::Exclamation);
    else if (sorted.done.size() == 1)
        access.progress().status(u"%1 gespeichert im Ordner %2."_s.arg(sorted.done[0], folderShown));
    else if (!sorted.done.isEmpty())
        access.progress().status(
            u"%1 Dateien gespeichert im Ordner %2."_s.arg(QString::number(sorted.done.size()), folderShown));
    return !sorted.hasFailed;
}

} // namespace kalmo::ui
