#include "cli/FileWords.h"

#include "cli/CauseWords.h"

#include <algorithm>

namespace kalmo::cli {

using operations::Cause;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::State;

namespace {

struct ObstacleRow
{
    FileObstacle obstacle;
    ExitStatus status;
    QStringView text; // %1 is the path in the phone, %2 the one here
};

constexpr ObstacleRow obstacles[] = {
    {FileObstacle::IsRoot, ExitWrongUse, u"that is the phone's root, which stays as it is"},
    {FileObstacle::BelowTelecom, ExitWrongUse,
     u"%1 holds contacts, appointments or notes; change contacts with \"kalmoctl phonebook\""},
    {FileObstacle::NoName, ExitWrongUse,
     u"the name %2 has nothing but commas and semicolons, which are left out"},
    {FileObstacle::BadName, ExitWrongUse, u"%2 can't be the name of a file in the phone"},
    {FileObstacle::OtherName, ExitWrongUse, u"%1 holds a letter that no name in the phone can have"},
    {FileObstacle::Twin, ExitWrongUse, u"%2 would replace another one of these files, %1"},
    {FileObstacle::NoLocalFile, ExitWrongUse, u"there is no file %2"},
    {FileObstacle::NotReadable, ExitWrongUse, u"%2 can't be read"},
    {FileObstacle::TooLarge, ExitWrongUse, u"%2 is larger than any phone takes"},
    {FileObstacle::IsFolder, ExitFailed, u"%1 is a folder in the phone"},
    {FileObstacle::IsFile, ExitFailed, u"a file of the phone is in the way of %1"},
    {FileObstacle::NotEmpty, ExitFailed, u"%1 is not empty; a folder has to be empty to be deleted"},
    {FileObstacle::NotThere, ExitFailed, u"there is no %1 in the phone"},
    {FileObstacle::IsThere, ExitFailed, u"there is a %1 in the phone already"},
    {FileObstacle::FolderNotListed, ExitFailed, u"could not list the folder of %1"},
    {FileObstacle::NoRoom, ExitFailed, u"the phone has too little room left for %1"},
    {FileObstacle::Kept, ExitRefused, u"%1 stays as it is"},
};

const ObstacleRow* find(FileObstacle obstacle)
{
    const auto row = std::find_if(std::begin(obstacles), std::end(obstacles),
                                  [obstacle](const ObstacleRow& one) { return one.obstacle == obstacle; });
    return row == std::end(obstacles) ? nullptr : row;
}

} // namespace

QString obstacleText(FileObstacle obstacle, const QString& shown, const QString& local)
{
    const ObstacleRow* row = find(obstacle);
    if (!row)
        return {};
    const QString text = row->text.toString();
    if (!text.contains(u"%1"_s))
        return text.contains(u"%2"_s) ? QString(text).replace(u"%2"_s, local) : text;
    return text.contains(u"%2"_s) ? text.arg(shown, local) : text.arg(shown);
}

ExitStatus statusOf(FileObstacle obstacle)
{
    const ObstacleRow* row = find(obstacle);
    return row ? row->status : ExitDone;
}

QString reasonText(Cause cause)
{
    return causeInWords(cause, u"the line"_s,
                        {{Cause::None, u"it was not tried"_s},
                         {Cause::Doubtful, u"it was not tried"_s},
                         {Cause::PhoneRefused, u"the phone refused"_s},
                         {Cause::NotRead, u"the file could not be read"_s},
                         {Cause::Mismatch, u"its size is not the one that the phone lists"_s},
                         {Cause::NotPossible, u"the phone can't do that"_s}});
}

QString reasonText(const FileOutcome& outcome)
{
    const QString text = reasonText(outcome.cause);
    return outcome.saveFault.isNone() ? text : u"%1 (%2)"_s.arg(text, saveFaultInWords(outcome.saveFault));
}

QString failureText(const QString& couldNot, const FileOutcome& outcome, const QString& unknown)
{
    const QString text = u"%1: %2"_s.arg(couldNot, reasonText(outcome));
    return outcome.state == State::Unknown ? text + u"; "_s + unknown : text;
}

QString openRecordText()
{
    return u"The record of this change could not be completed: it keeps the state unknown, and can be undone "
           u"all the same.\n"_s;
}

ExitStatus statusOf(const FileOutcome& outcome)
{
    return outcome.state == State::Done ? ExitDone : ExitFailed;
}

} // namespace kalmo::cli
