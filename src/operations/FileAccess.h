#pragma once

#include "obex/clsMmcOperation.h"
#include "obex/PhonePath.h"
#include "operations/Outcome.h"

namespace kalmo::operations {

using FolderListing = QList<obex::tObxDirEntry>;

/// Reason why a file or folder can't be dealt with as wanted. Nothing was sent for it then.
enum class FileObstacle {
    None,
    IsRoot,          ///< the root stays as it is
    BelowTelecom,    ///< contacts, appointments and notes, which have operations of their own
    NoName,          ///< nothing is left of the name without "," and ";"
    BadName,         ///< the name holds a separator
    OtherName,       ///< the phone would get another name
    Twin,            ///< another one of the same list goes to the same place
    NoLocalFile,     ///< there is no such file on the computer
    NotReadable,     ///< the computer's file can't be read
    TooLarge,        ///< more bytes than any phone takes
    IsFolder,        ///< a folder of the phone is in the place of a file
    IsFile,          ///< the other way round
    NotEmpty,        ///< a folder that holds more than what goes with it
    NotThere,        ///< the phone has nothing of that name
    IsThere,         ///< the phone has something of that name
    FolderNotListed, ///< the folder could not be listed
    NoRoom,          ///< the phone's memory has too few bytes left
    Kept,            ///< the user keeps what is there
};

/// Facts about one file or folder after an operation.
struct FileOutcome
{
    State state = State::Unchanged;
    Cause cause = Cause::None;
    int code = 0;             ///< as in obex::ReCode where the phone or the line is the cause
    bool isConfirmed = false; ///< the phone said yes
    bool isVerified = false;  ///< a listing shows the change
    bool mayHoldPart = false; ///< the phone may hold a part of a file that was sent
    bool isOldBack = false;   ///< it was deleted, and the phone lists it again as it was
    bool isOldLost = false;   ///< the file that was to be replaced is gone from the phone
    QString savedIn = {};     ///< local copy of a file that was replaced
    SaveFault saveFault = {}; ///< the reason for Cause::NotSaved, where it is known
};

/// The connection that operations on files use: an OBEX client that is online to the file system. Lives as
/// long as one command does, blocks the window for that time, and reports to `progress`.
class FileAccess
{
public:
    /// `name` is for the log.
    FileAccess(const std::shared_ptr<obex::clsMmc>& client, const QString& name,
               const toolkit::Progress& progress);

    /// Returns true if requests may be sent: not in an event handler in the middle of another exchange, and
    /// not if the phone does not answer, which has been reported.
    bool mayBegin() const { return m_operation.mayBegin(); }

    obex::clsMmc& client() const { return *m_client; }
    const toolkit::Progress& progress() const { return m_operation.progress(); }

    /// Returns true if more can be sent. After an answer that did not come the client connects anew once,
    /// with little patience and without a box: a silent phone costs its timeout once, however many files
    /// wait.
    bool canSend();
    /// The same, and false too once the user wants to stop: for what is not begun yet.
    bool goesOn() { return !isStopped() && canSend(); }
    bool isStopped() const;

    /// Bytes left for files in the memory of this folder, which is the phone's or the card's. Nothing where
    /// the phone does not say; it has not been reported.
    std::optional<qint64> askForRoom(const obex::PhonePath& folder);

    /// Goes to a folder; sends nothing if the client is there. False has been reported.
    bool enter(const obex::PhonePath& folder);
    /// Goes to a folder and lists it. Nothing has been reported.
    std::optional<FolderListing> list(const obex::PhonePath& folder);
    /// The same after a failure, to learn what the phone holds: reports nothing, and does not look at the
    /// cancel box.
    std::optional<FolderListing> look(const obex::PhonePath& folder);
    /// Does the same, but a folder that the phone does not have counts as an empty one. Any other refusal, of
    /// a locked or a busy phone for example, says nothing about the folder.
    std::optional<FolderListing> lookIfThere(const obex::PhonePath& folder);

    /// A file that was sent.
    struct SentFile
    {
        QString name;
        qint64 bytes = 0;
        bool isConfirmed = false; ///< by the phone
    };
    /// Returns true if a listing shows all of a file. Some phones list 0 bytes for each file: that counts for
    /// a confirmed file, unless this connection has listed a size of another.
    bool showsWhole(const FolderListing& entries, const SentFile& file) const;

    /// Fills in cause and code of what has just failed.
    void blame(FileOutcome& outcome) const;
    Cause cause() const;

    /// Returns true if the record of a change could not be completed: it keeps the state unknown.
    bool isRecordOpen() const { return m_isRecordOpen; }
    void leaveRecordOpen() { m_isRecordOpen = true; }

private:
    bool read(FolderListing& entries, const toolkit::Progress& progress);

    std::shared_ptr<obex::clsMmc> m_client;
    obex::clsMmc::Operation m_operation;
    obex::clsMmc::Busy m_busy;
    bool m_isLost = false; // the phone stays silent
    bool m_isRecordOpen = false;
    bool m_listsSizes = false; // a listing had a size other than 0
};

/// The obstacle to any change of a place: it is the root, or below "telecom".
FileObstacle obstacleAt(const obex::PhonePath& path);

/// Entry of a listing by its name, without regard to case as the phones take names; null if there is none.
const obex::tObxDirEntry* findEntry(const FolderListing& entries, const QString& name);

/// Returns true for the memory card's folder and all below it.
bool isOnCard(const obex::PhonePath& path);

/// Returns true for a file that the phone has confirmed, and that could not be listed after it.
bool isUncompared(const FileOutcome& file);

/// Adds the facts of single files up. Done only if all of them are; Unknown as soon as one is, or if some
/// were changed and others not.
Outcome sumOf(const std::vector<FileOutcome>& files);

} // namespace kalmo::operations
