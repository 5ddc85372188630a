#include "ui/panels/FfsFolders.h"

#include "operations/FolderChanges.h"
#include "ui/panels/FileBoxes.h"

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using operations::Cause;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::State;
using toolkit::Icon;

namespace {

/// Text about a name that can't be; %1 is the name.
struct NameObstacle
{
    FileObstacle obstacle;
    QStringView text;
};

constexpr NameObstacle nameObstacles[] = {
    {FileObstacle::IsRoot, u"Das Basisverzeichnis kann nicht geändert werden."},
    {FileObstacle::BelowTelecom, u"In diesem Ordner speichert das Telefon Kontakte und Termine. "
                                 u"Hier wird nichts geändert: %1"},
    {FileObstacle::NoName, u"Im Telefon kann nichts so heißen: %1"},
    {FileObstacle::BadName, u"Im Telefon kann nichts so heißen: %1"},
    {FileObstacle::OtherName, u"Im Telefon kann nichts so heißen: %1"},
    {FileObstacle::IsFile, u"Im Telefon gibt es schon eine Datei mit dem Namen %1."},
    {FileObstacle::IsThere, u"Im Telefon gibt es den Namen %1 schon."},
    {FileObstacle::NotThere, u"Das Telefon enthält das nicht mehr. Bitte laden Sie das Verzeichnis neu."},
};

/// False, and says why, if there is an obstacle.
bool isPossible(const clsMmc& mmc, FileObstacle obstacle, const QString& name)
{
    for (const NameObstacle& row : nameObstacles) {
        if (row.obstacle == obstacle)
            tell(mmc, row.text.toString().replace(u"%1"_s, name), Icon::Exclamation);
    }
    return obstacle == FileObstacle::None;
}

/// Says what the client has not said.
bool told(const FileAccess& access, const FileOutcome& outcome, const QString& name)
{
    const clsMmc& mmc = access.client();
    tellOpenRecord(mmc, access);
    if (outcome.cause == Cause::NotSaved)
        tell(mmc,
             u"Im Telefon wurde nichts geändert, weil der bisherige Stand auf diesem Computer nicht "
             u"gesichert werden konnte."_s +
                 inParagraph(outcome.saveFault),
             Icon::Exclamation);
    else if (outcome.state == State::Unknown)
        tell(mmc, u"Es ist nicht bekannt, ob das Telefon den Namen %1 angenommen hat."_s.arg(name),
             Icon::Exclamation);
    return outcome.state == State::Done;
}

} // namespace

bool makeFolder(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress, const PhonePath& in,
                const QString& name)
{
    FileAccess access(mmc, u"Neuer Ordner"_s, progress);
    operations::NewFolder plan = operations::planNewFolder(in.below(name));
    if (!isPossible(*mmc, plan.obstacle, name) || !access.mayBegin() ||
        !operations::lookBeforeMaking(access, plan))
        return false;
    const bool isThere = plan.obstacle == FileObstacle::None && plan.missing.empty();
    if (!isPossible(*mmc, isThere ? FileObstacle::IsThere : plan.obstacle, name))
        return false;
    const FileOutcome outcome = operations::applyNewFolder(access, plan);
    if (outcome.state == State::Done)
        access.enter(in); // the client went into the new folder
    const bool isDone = told(access, outcome, name);
    if (isDone)
        access.progress().status(u"Ordner %1 angelegt."_s.arg(name));
    return isDone;
}

bool renameEntry(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress, const PhonePath& from,
                 const QString& name)
{
    FileAccess access(mmc, u"Umbenennen"_s, progress);
    operations::Move plan = operations::planMove(from, from.folder().below(name));
    if (!isPossible(*mmc, plan.obstacle, name) || !access.mayBegin() ||
        !operations::lookBeforeMoving(access, plan) || !isPossible(*mmc, plan.obstacle, name))
        return false;
    const bool isDone = told(access, operations::applyMove(access, plan), name);
    if (isDone)
        access.progress().status(u"%1 heißt jetzt %2."_s.arg(from.name(), name));
    return isDone;
}

} // namespace kalmo::ui
