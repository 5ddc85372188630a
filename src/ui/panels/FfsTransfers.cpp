#include "ui/panels/FfsTransfers.h"

#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "obex/clsMmcOperation.h"
#include "phonedata/BackupFiles.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using toolkit::Answer;
using toolkit::Buttons;
using toolkit::Icon;
using toolkit::Progress;

namespace {

constexpr int mostNamesTold = 10;
constexpr int longestNameTold = 60; // characters

/// Names for a box, which has to fit on a screen.
QString someOf(const QStringList& names)
{
    QStringList lines;
    for (const QString& name : names.first(std::min<qsizetype>(names.size(), mostNamesTold)))
        lines.append(name.size() > longestNameTold ? name.first(longestNameTold) + u'…' : name);
    if (names.size() > mostNamesTold)
        lines.append(u"und %1 weitere"_s.arg(names.size() - mostNamesTold));
    return lines.join(u'\n');
}

void tell(const clsMmc& mmc, const QString& text, Icon icon)
{
    if (!mmc.isAbandoned())
        mmc.line().context().dialogs.Show({.text = text, .icon = icon});
}

Answer askToReplace(const clsMmc& mmc, const QString& text)
{
    if (mmc.isAbandoned())
        return Answer::Cancel;
    return mmc.line().context().dialogs.Show(
        {.text = text, .buttons = Buttons::YesNoCancel, .icon = Icon::Question, .defaultButton = Answer::No});
}

/// What became of each file of a job.
struct Outcome
{
    QStringList done;
    QStringList notDone;
    QStringList impossible; ///< names that this computer doesn't take
    bool failed = false;
};

QString reportOf(const Outcome& outcome, const QString& doneTitle, const QString& notDoneTitle)
{
    QStringList parts;
    if (!outcome.done.isEmpty())
        parts.append(doneTitle + u'\n' + someOf(outcome.done));
    if (!outcome.notDone.isEmpty())
        parts.append(notDoneTitle + u'\n' + someOf(outcome.notDone));
    if (!outcome.impossible.isEmpty()) {
        parts.append(u"Nicht gespeichert, weil Dateien auf diesem Computer nicht so heißen können:\n"_s +
                     someOf(outcome.impossible));
    }
    return parts.join(u"\n\n"_s);
}

/// Where the file goes, empty if it is to be left out. Cancel sets `stop`.
QString targetFor(const clsMmc& mmc, const QString& folder, const QString& localName, bool& stop)
{
    const QString target = QDir(folder).filePath(localName);
    if (!QFileInfo::exists(target))
        return target;
    const Answer answer =
        askToReplace(mmc, u"Die Datei \"%1\" ist im Ordner %2 schon vorhanden.\nDatei überschreiben?"_s.arg(
                              localName, QDir::toNativeSeparators(folder)));
    stop = answer == Answer::Cancel;
    return answer == Answer::Yes ? target : QString();
}

/// A file of the phone on its way to the disk.
struct Fetched
{
    QString name;
    QString target;
    bool isBackup = false;  ///< which has to be whole
    bool isAsListed = true; ///< not so for a file that is newer than the listing
};

/// Whether so many bytes are to be saved: as many as the phone lists, or as the user wants to have in spite
/// of that.
bool isWanted(const clsMmc& mmc, const Fetched& file, qsizetype bytes)
{
    qint32 listed = 0;
    if (file.isAsListed)
        mmc.GetFileSizeInActDir(file.name, listed);
    if (obex::isWhole(bytes, listed))
        return true;
    const QString text =
        u"Die Datei \"%1\" ist nicht vollständig angekommen: Das Telefon gibt %2 Bytes an und "
        u"hat %3 gesendet."_s.arg(file.name, QString::number(listed), QString::number(bytes));
    if (file.isBackup) {
        tell(mmc, text + u" Ohne Sicherung wird sie im Telefon nicht ersetzt."_s, Icon::Exclamation);
        return false;
    }
    return !mmc.isAbandoned() &&
           mmc.line().context().dialogs.Show({.text = text + u"\n\nSoll sie trotzdem gespeichert werden?"_s,
                                              .buttons = Buttons::YesNo,
                                              .icon = Icon::Question,
                                              .defaultButton = Answer::No}) == Answer::Yes;
}

enum class Step { Done, LeftOut, Ended };

Step fetch(clsMmc& mmc, const Progress& progress, const Fetched& file)
{
    QByteArray data;
    if (!mmc.GetFile(file.name, data, progress) || mmc.isAbandoned())
        return Step::Ended;
    const bool wanted = isWanted(mmc, file, data.size());
    QDateTime modified;
    mmc.GetTimeStampFromFileInActDir(file.name, modified);
    if (wanted && mmc.SaveFile(data, file.target, modified))
        return Step::Done;
    if (!mmc.isAbandoned())
        progress.status(u"Download "_s + file.name + u" nicht abgeschlossen."_s);
    return wanted ? Step::Ended : Step::LeftOut;
}

void download(clsMmc& mmc, const Progress& progress, const QStringList& names, const QString& folder,
              Outcome& outcome)
{
    bool stop = false;
    for (const QString& name : names) {
        stop = stop || progress.cancelled();
        const QString localName = app::safeLocalName(name);
        if (localName.isEmpty()) {
            outcome.impossible.append(name);
            continue;
        }
        const QString target = stop ? QString() : targetFor(mmc, folder, localName, stop);
        const Step step = target.isEmpty() ? Step::LeftOut : fetch(mmc, progress, {name, target});
        (step == Step::Done ? outcome.done : outcome.notDone).append(name);
        outcome.failed = outcome.failed || step == Step::Ended;
        stop = stop || outcome.failed;
    }
}

/// The name that the phone will have the file by.
QString nameInPhone(const QString& path)
{
    return QFileInfo(path).fileName().remove(u',').remove(u';');
}

bool canBeRead(const QString& path)
{
    return QFile(path).open(QIODevice::ReadOnly) && QFileInfo(path).size() <= obex::largestObject;
}

/// Copies a file of the phone to the folder for backups, as fetch() does it. The path of the copy, empty if
/// there is none.
QString backUp(clsMmc& mmc, const Progress& progress, const QString& name, bool isAsListed)
{
    const QString localName = app::safeLocalName(name);
    if (localName.isEmpty()) {
        tell(mmc, u"Nicht ersetzt, weil eine Sicherung auf diesem Computer nicht so heißen kann:\n"_s + name,
             Icon::Exclamation);
        return {};
    }
    const QFileInfo parts(localName);
    const QString ending = parts.suffix().isEmpty() ? QString() : u'.' + parts.suffix();
    app::Context& context = mmc.line().context();
    const QString copy = phonedata::backupPath(context, localName.chopped(ending.size()) + u' ', ending);
    if (!app::EnsureDirExists(context, QFileInfo(copy).path()))
        return {};
    return fetch(mmc, progress, {name, copy, true, isAsListed}) == Step::Done ? copy : QString();
}

/// The phone can't write over a file: the old one has to go first, and must not be lost with a new one that
/// doesn't arrive.
bool replace(clsMmc& mmc, const Progress& progress, const QString& path, const QString& name, bool isAsListed)
{
    const QString copy = backUp(mmc, progress, name, isAsListed);
    if (copy.isEmpty())
        return false;
    if (!progress.cancelled() && mmc.Del(name, progress) && mmc.PutFile(path, progress))
        return true;
    tell(mmc,
         u"Die Datei \"%1\" wurde nicht ersetzt. Eine Kopie der bisherigen Datei liegt hier:\n%2"_s.arg(
             name, QDir::toNativeSeparators(copy)),
         Icon::Exclamation);
    return false;
}

Step upload(clsMmc& mmc, const Progress& progress, const QString& path, const QStringList& sent,
            std::optional<qint64> freeBytes)
{
    if (freeBytes && QFileInfo(path).size() > *freeBytes) {
        tell(mmc, u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."_s,
             Icon::Exclamation);
        return Step::Ended;
    }
    const QString name = nameInPhone(path);
    if (!obex::fitsNameBytes(name)) {
        tell(mmc, u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:\n"_s + name,
             Icon::Exclamation);
        return Step::LeftOut;
    }
    const bool isNew = sent.contains(name, Qt::CaseInsensitive); // since the last listing
    if ((isNew || mmc.IsFileInActDir(name)) && canBeRead(path)) {
        const Answer answer =
            askToReplace(mmc, u"Die Datei \""_s + name +
                                  u"\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s);
        if (answer == Answer::No)
            return Step::LeftOut;
        return answer == Answer::Yes && replace(mmc, progress, path, name, !isNew) ? Step::Done : Step::Ended;
    }
    // A file that can't be read costs nothing in the phone: the client looks first, and tells.
    return mmc.PutFile(path, progress) ? Step::Done : Step::Ended;
}

} // namespace

bool downloadFiles(const std::shared_ptr<clsMmc>& mmc, const Progress& progress, const QStringList& names,
                   const QString& folder)
{
    const clsMmc::Operation operation(*mmc, u"Download"_s, progress);
    if (names.isEmpty() || !operation.mayBegin())
        return false;
    const clsMmc::Busy busy(*mmc);
    Outcome outcome;
    download(*mmc, operation.progress(), names, folder, outcome);
    const QString folderShown = QDir::toNativeSeparators(folder);
    const bool plain = outcome.impossible.isEmpty() && (names.size() == 1 || outcome.notDone.isEmpty());
    if (!plain) {
        tell(*mmc,
             reportOf(outcome, u"Gespeichert im Ordner %1:"_s.arg(folderShown), u"Nicht gespeichert:"_s),
             Icon::Exclamation);
    } else if (!outcome.done.isEmpty()) {
        operation.progress().status(outcome.done.size() == 1
                                        ? u"%1 gespeichert im Ordner %2."_s.arg(outcome.done[0], folderShown)
                                        : u"%1 Dateien gespeichert im Ordner %2."_s.arg(
                                              QString::number(outcome.done.size()), folderShown));
    }
    return !outcome.failed;
}

bool uploadFiles(const std::shared_ptr<clsMmc>& mmc, const Progress& progress, const QStringList& paths,
                 std::optional<qint64> freeBytes)
{
    const clsMmc::Operation operation(*mmc, u"Upload"_s, progress);
    if (!operation.mayBegin())
        return false;
    const clsMmc::Busy busy(*mmc);
    Outcome outcome;
    for (const QString& path : paths) {
        const Step step =
            outcome.failed ? Step::Ended : upload(*mmc, operation.progress(), path, outcome.done, freeBytes);
        if (step == Step::Done) {
            outcome.done.append(nameInPhone(path));
            if (freeBytes)
                *freeBytes -= QFileInfo(path).size();
        } else {
            outcome.notDone.append(QFileInfo(path).fileName());
        }
        outcome.failed = step == Step::Ended;
    }
    if (outcome.failed && paths.size() > 1) {
        tell(*mmc, reportOf(outcome, u"Zum Telefon übertragen:"_s, u"Nicht übertragen:"_s),
             Icon::Exclamation);
    }
    return !outcome.failed;
}

bool deleteEntries(const std::shared_ptr<clsMmc>& mmc, const Progress& progress, const QStringList& names)
{
    const clsMmc::Operation operation(*mmc, u"Löschen"_s, progress);
    if (!operation.mayBegin())
        return false;
    const clsMmc::Busy busy(*mmc);
    for (const QString& name : names) {
        if (!mmc->Del(name, operation.progress()))
            return false;
        if (operation.progress().cancelled())
            break;
    }
    return true;
}

} // namespace kalmo::ui
