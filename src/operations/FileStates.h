#pragma once

#include "operations/FileAccess.h"
#include "operations/Records.h"

namespace kalmo::operations {

/// Content of one place of the phone before a change, as a record keeps it.
struct FileState
{
    enum class Kind {
        Nothing, ///< there was no file or folder
        File,    ///< with `bytes`, `modified` and rights
        Folder,
        Moved,  ///< its content is at `movedTo` after the change
        Rights, ///< of a file or folder that keeps its content
    };

    obex::PhonePath path = obex::PhonePath();
    Kind kind = Kind::Nothing;
    QByteArray bytes = {};
    QDateTime modified = {}; ///< by the phone's clock, invalid where it says none
    int userPerm = 0;        ///< sum of obex::Permission
    int groupPerm = 0;
    obex::PhonePath movedTo = obex::PhonePath();

    bool operator==(const FileState&) const = default;
};

/// Permissions as a request has them: "RWD".
QString rightsText(int permissions);

/// Gives a file or folder of the current folder the rights that it had, if it has others. False has been
/// reported by the client.
bool restoreRights(FileAccess& access, const FileState& wanted, const obex::tObxDirEntry& entry);

/// State of a place by its entry in the listing of its folder, null where the phone has none. Reads the
/// file's bytes. Nothing if they can't be read, or if fewer or more came than the phone lists; the former has
/// been reported by the client, and the reason is in `outcome`.
std::optional<FileState> readState(FileAccess& access, const obex::PhonePath& path,
                                   const obex::tObxDirEntry* entry, FileOutcome& outcome);

/// The parts of a record: first "states.json" with an object for each place, then the bytes of each file.
std::vector<RecordedPart> partsOf(const std::vector<FileState>& states);
/// The way back; nothing for a record without such parts.
std::optional<std::vector<FileState>> statesIn(const Record& record);

/// Writes the record of a change to files. Its id; nothing if it could not be written, and then nothing may
/// be sent.
std::optional<QString> beginFilesRecord(FileAccess& access, RecordCause cause,
                                        const std::vector<FileState>& states, SaveFault* fault);
/// Adds what was done. `items` says it for each place. A failure is in FileAccess::isRecordOpen().
void finishFilesRecord(FileAccess& access, const Outcome& outcome, const QJsonArray& items);

} // namespace kalmo::operations
