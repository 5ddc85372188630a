#pragma once

#include "operations/FileAccess.h"

namespace kalmo::operations {

/// Changes to places of the phone's file system: new folders, moves, rights. Each plan is checked without the
/// phone first; the second step looks into it. A record keeps what takes the change back, and an answer that
/// did not come is replaced by a look into the folders.

struct NewFolder
{
    obex::PhonePath path;
    FileObstacle obstacle = FileObstacle::None;
    std::vector<obex::PhonePath> missing = {}; ///< from above to below; empty where all is there already
};

NewFolder planNewFolder(const obex::PhonePath& path);
/// Returns true if all folders on the way were listed. The client reports a failure.
bool lookBeforeMaking(FileAccess& access, NewFolder& plan);
FileOutcome applyNewFolder(FileAccess& access, const NewFolder& plan);

struct Move
{
    obex::PhonePath from;
    obex::PhonePath to;
    FileObstacle obstacle = FileObstacle::None;
};

Move planMove(const obex::PhonePath& from, const obex::PhonePath& to);
bool lookBeforeMoving(FileAccess& access, Move& plan);
FileOutcome applyMove(FileAccess& access, const Move& plan);
/// The same without a record, for a caller that keeps one.
FileOutcome moveUnrecorded(FileAccess& access, const Move& plan);

enum class Rights { ReadOnly, All };

struct RightsChange
{
    obex::PhonePath path;
    Rights wanted = Rights::All;
    FileObstacle obstacle = FileObstacle::None;
    std::optional<obex::tObxDirEntry> before = {};
};

RightsChange planRights(const obex::PhonePath& path, Rights wanted);
bool lookBeforeRights(FileAccess& access, RightsChange& plan);
/// `after` is the entry as listed after the change, where it is listed.
FileOutcome applyRights(FileAccess& access, const RightsChange& plan,
                        std::optional<obex::tObxDirEntry>& after);

} // namespace kalmo::operations
