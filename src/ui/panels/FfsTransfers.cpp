#include "ui/panels/FfsTransfers.h"

#include "operations/DeleteFiles.h"
#include "ui/panels/FileBoxes.h"
#include "ui/panels/NumberedPanel.h"

#include <QDir>

#include <algorithm>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using operations::Cause;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::FileToDelete;
using operations::PlannedFile;
using operations::State;
using toolkit::Answer;
using toolkit::Icon;

namespace {

/// Text about a file that can't be sent; %1 is its name.
struct ObstacleRow
{
    FileObstacle obstacle;
    QStringView text;
};

constexpr QStringView noSuchName = u"Nicht übertragen, weil Dateien im Telefon nicht so heißen können:\n%1";

constexpr ObstacleRow obstacles[] = {
    {FileObstacle::NoRoom, u"Im Telefon ist zu wenig Speicher frei, um den Vorgang ausfürhen zu können."},
    {FileObstacle::NoName, noSuchName},
    {FileObstacle::BadName, noSuchName},
    {FileObstacle::OtherName, noSuchName},
    {FileObstacle::Twin, u"Nicht übertragen, weil eine andere gewählte Datei im Telefon genauso heißt:\n%1"},
    {FileObstacle::IsFolder, u"Nicht übertragen, weil im Telefon ein Ordner so heißt:\n%1"},
    {FileObstacle::BelowTelecom,
     u"Nicht übertragen, weil das Telefon in diesem Ordner Kontakte und Termine speichert:\n%1"},
};

void tellObstacle(clsMmc& mmc, const PlannedFile& file)
{
    if (file.obstacle == FileObstacle::TooLarge)
        mmc.ErrMsg(obex::TooMuchData);
    if (file.obstacle == FileObstacle::NoLocalFile || file.obstacle == FileObstacle::NotReadable)
        mmc.ErrMsg(obex::ReadFailed);
    for (const ObstacleRow& row : obstacles) {
        if (row.obstacle == file.obstacle)
            tell(mmc, row.text.toString().replace(u"%1"_s, file.path.name()), Icon::Exclamation);
    }
}

void tellOpenRecord(const clsMmc& mmc, const FileAccess& access)
{
    if (access.isRecordOpen())
        tell(mmc,
             u"Der frühere Stand ist gesichert, aber das Ergebnis dieser Änderung konnte nicht dazu "
             u"geschrieben werden. Sie steht als \"nicht bestätigt\" unter \"Frühere Stände\"."_s,
             Icon::Exclamation);
}

QString inParagraph(const QString& reason)
{
    return reason.isEmpty() ? QString() : u"\n\n"_s + reason;
}

/// Says what the client has not said: what is true of the file after a failure.
void tellUpload(const clsMmc& mmc, const PlannedFile& file, const FileOutcome& outcome)
{
    const QString name = file.path.name();
    if (outcome.state == State::Done && !outcome.isConfirmed) {
        tell(mmc,
             u"Die Datei \"%1\" ist vollständig im Telefon: Es führt sie mit %2 Bytes."_s.arg(
                 name, QString::number(file.size)),
             Icon::Information);
    } else if (outcome.isOldLost) {
        tell(mmc,
             u"Die Datei \"%1\" wurde nicht ersetzt%2. Eine Kopie der bisherigen Datei liegt hier:\n%3"_s.arg(
                 name,
                 outcome.mayHoldPart ? u", das Telefon enthält vielleicht einen Teil davon"_s : QString(),
                 QDir::toNativeSeparators(outcome.savedIn)),
             Icon::Exclamation);
    } else if (outcome.cause == Cause::Mismatch && outcome.savedIn.isEmpty() && file.replaced) {
        tell(mmc,
             u"Die Datei \"%1\" konnte im Telefon nicht vollständig gelesen werden. Ohne Sicherung wird sie "
             u"nicht ersetzt."_s.arg(name),
             Icon::Exclamation);
    } else if (outcome.cause == Cause::NotSaved) {
        tell(mmc,
             u"Die Datei \"%1\" wurde nicht übertragen, weil der bisherige Stand auf diesem Computer nicht "
             u"gesichert werden konnte."_s.arg(name) +
                 inParagraph(outcome.reason),
             Icon::Exclamation);
    } else if (outcome.state == State::Unknown) {
        tell(mmc,
             outcome.mayHoldPart
                 ? u"Das Telefon enthält vielleicht nur einen Teil der Datei \"%1\"."_s.arg(name)
                 : u"Es ist nicht bekannt, ob die Datei \"%1\" im Telefon ist."_s.arg(name),
             Icon::Exclamation);
    } else if (file.replaced && outcome.state == State::Unchanged && !outcome.savedIn.isEmpty()) {
        tell(mmc, u"Die Datei \"%1\" wurde nicht ersetzt. Im Telefon ist die bisherige Datei."_s.arg(name),
             Icon::Exclamation);
    }
}

/// Asks about each file that would be replaced. False if the user cancels.
bool askAboutReplaced(const clsMmc& mmc, operations::SendPlan& plan)
{
    for (PlannedFile& file : plan.files) {
        if (file.obstacle == FileObstacle::NoRoom)
            return true; // ends the upload
        if (!file.isPossible() || !file.replaced)
            continue;
        const Answer answer =
            askToReplace(mmc, u"Die Datei \""_s + file.path.name() +
                                  u"\" befindet sich bereits auf dem Mobiltelefon.\nDatei überschreiben?"_s);
        if (answer == Answer::Cancel)
            return false;
        if (answer == Answer::No)
            file.obstacle = FileObstacle::Kept;
    }
    return true;
}

QStringList lines(const QString& title, const QStringList& names)
{
    return names.isEmpty() ? QStringList() : QStringList(title + u'\n' + someOf(names));
}

/// Names of what is not safely deleted.
struct NotDeleted
{
    QStringList unsaved = {};     ///< the record could not be written
    QString reason = {};          ///< the system's words for that
    QStringList open = {};        ///< the phone did not answer
    QStringList stillListed = {}; ///< the phone confirmed, and lists it
};

QString deletedText(const NotDeleted& names)
{
    const QStringList parts =
        lines(u"Nicht gelöscht, weil der Inhalt nicht gesichert werden konnte:"_s, names.unsaved) +
        (names.reason.isEmpty() ? QStringList() : QStringList(names.reason)) +
        lines(u"Das Telefon hat nicht geantwortet. Es ist nicht bekannt, ob das noch vorhanden ist:"_s,
              names.open) +
        lines(u"Das Telefon hat das Löschen bestätigt, enthält das aber immer noch:"_s, names.stillListed);
    return parts.join(u"\n\n"_s);
}

} // namespace

bool uploadFiles(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress, const PhonePath& to,
                 const std::vector<operations::FileToSend>& files, std::optional<qint64> freeBytes)
{
    NumberedPanel panel(progress.panel, static_cast<qsizetype>(files.size()));
    FileAccess access(mmc, u"Upload"_s, {&panel, progress.bar, progress.cancel});
    operations::SendPlan plan = operations::planSend(to, files);
    const operations::SendPolicy policy{
        .stopsAtFailure = true, .freeBytes = freeBytes, .countsRoomOfReplaced = false};
    const bool isLookNeeded = plan.isAnyPossible();
    if (!access.mayBegin() || (isLookNeeded && !operations::lookBeforeSending(access, plan, policy)) ||
        !askAboutReplaced(*mmc, plan))
        return false;
    QStringList done;
    QStringList notDone;
    bool hasFailed = false;
    const auto finished = [&](const PlannedFile& file, const FileOutcome& outcome) {
        const bool isDone = outcome.state == State::Done;
        (isDone ? done : notDone).append(file.path.name());
        if (!hasFailed) { // those after it were not tried
            tellObstacle(*mmc, file);
            tellUpload(*mmc, file, outcome);
        }
        hasFailed = hasFailed || file.obstacle == FileObstacle::NoRoom || (file.isPossible() && !isDone);
    };
    const auto sending = [&panel](const PlannedFile&) { panel.next(); };
    operations::applySend(access, plan, policy, {.sending = sending, .finished = finished});
    tellOpenRecord(*mmc, access);
    if (hasFailed && files.size() > 1) {
        const QStringList parts =
            lines(u"Zum Telefon übertragen:"_s, done) + lines(u"Nicht übertragen:"_s, notDone);
        tell(*mmc, parts.join(u"\n\n"_s), Icon::Exclamation);
    }
    return !hasFailed;
}

bool deleteEntries(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress, const PhonePath& in,
                   const QStringList& names)
{
    FileAccess access(mmc, u"Löschen"_s, progress);
    if (!access.mayBegin())
        return false;
    std::vector<PhonePath> paths;
    for (const QString& name : names)
        paths.push_back(in.below(name));
    std::vector<FileToDelete> files = operations::planDelete(paths);
    operations::lookBeforeDeleting(access, files);
    NotDeleted notDeleted;
    bool isAllDone = true;
    const auto finished = [&](const FileToDelete& file, const FileOutcome& outcome) {
        const QString name = file.path.name();
        if (outcome.cause == Cause::Mismatch && outcome.isConfirmed)
            notDeleted.stillListed.append(name);
        else if (outcome.cause == Cause::NotSaved || outcome.cause == Cause::Mismatch)
            notDeleted.unsaved.append(name);
        else if (outcome.state == State::Unknown)
            notDeleted.open.append(name);
        if (notDeleted.reason.isEmpty())
            notDeleted.reason = outcome.reason;
        isAllDone = isAllDone && (outcome.state == State::Done || file.obstacle == FileObstacle::NotThere);
    };
    const auto mayLose = [&](const QStringList& unreadable) {
        return ask(*mmc,
                   u"Das Telefon gibt den Inhalt nicht heraus, eine Sicherung ist nicht möglich:\n%1\n\n"
                   u"Trotzdem löschen?"_s.arg(someOf(unreadable)));
    };
    operations::applyDelete(access, files, {.stopsAtFailure = true},
                            {.finished = finished, .mayLose = mayLose});
    tellOpenRecord(*mmc, access);
    if (const QString text = deletedText(notDeleted); !text.isEmpty())
        tell(*mmc, text, Icon::Exclamation);
    return isAllDone;
}

} // namespace kalmo::ui
