#pragma once

#include "operations/FileAccess.h"

#include <functional>

namespace kalmo::operations {

/// A file that is to be sent: a local one, or bytes that somebody has made.
struct FileToSend
{
    QString localPath; ///< of the bytes too, where they were made from a file; for messages
    QString name = {}; ///< in the phone, that of `localPath` if it is empty
    std::optional<QByteArray> bytes = {}; ///< content in place of the local file's
};

/// The facts about it before it is sent.
struct PlannedFile
{
    FileToSend file;
    obex::PhonePath path; ///< in the phone, without the "," and ";" that phones cannot handle
    qint64 size = 0;      ///< bytes
    FileObstacle obstacle = FileObstacle::None;
    std::optional<obex::tObxDirEntry> replaced = {}; ///< the phone's file of that name

    bool isPossible() const { return obstacle == FileObstacle::None; }
};

struct SendPlan
{
    obex::PhonePath folder;
    std::vector<PlannedFile> files;

    bool isAnyPossible() const;
    int possible() const;
};

struct SendPolicy
{
    bool stopsAtFailure = false; ///< leaves out the files after one that failed
    /// Bytes that the phone has left, nothing where it does not say.
    std::optional<qint64> freeBytes = {};
    /// A file fits where the one that it replaces makes room for it. Otherwise its whole size has to be free,
    /// as it is described for the window.
    bool countsRoomOfReplaced = true;
};

/// Reports while files are sent. Each may be empty.
struct SendEvents
{
    std::function<void(const PlannedFile&)> saving = {};  ///< the phone's file is read, to keep a copy
    std::function<void(const PlannedFile&)> sending = {}; ///< the file's turn has come
    /// The file is through, or was left out.
    std::function<void(const PlannedFile&, const FileOutcome&)> finished = {};
};

/// Step one, without the phone: names, sizes and what can't be sent.
SendPlan planSend(const obex::PhonePath& folder, const std::vector<FileToSend>& files);

/// Step two: lists the folder, finds the files that would be replaced and those without room. Returns
/// true if the folder was listed; the client reports a failure. If there is room, the program then asks about
/// each file with `replaced`, and sets the obstacle `Kept` where the user wants to keep that.
bool lookBeforeSending(FileAccess& access, SendPlan& plan, const SendPolicy& policy);

/// Marks the files that the phone has no room for. A replaced file gives its room to the files after it, a
/// kept one does not, so call it again after the questions. Returns true if all files fit that are possible
/// otherwise. If not, nothing is sent, and the program reports it ahead of any question.
bool requireRoom(SendPlan& plan, const SendPolicy& policy);

/// Step three. Replacing is one procedure: the phone's file is read, copied into the folder for backups and
/// recorded, the local file is read, then the old file is deleted and the new one is sent. A new file that
/// the phone does not take gives way to the old one again. Each file that is sent has to appear in the
/// listing with its size; that also decides about an upload that the phone ended early or did not answer.
/// One outcome for each file of the plan.
std::vector<FileOutcome> applySend(FileAccess& access, const SendPlan& plan, const SendPolicy& policy,
                                   const SendEvents& events);

} // namespace kalmo::operations
