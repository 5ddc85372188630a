#pragma once

#include "link/mdlComm.h"
#include "obex/FolderListing.h"
#include "obex/ObexFrames.h"
#include "obex/ProgressRelay.h"
#include "obex/PutFrames.h"
#include "obex/ResponseCodes.h"

#include <QObject>

#include <functional>
#include <memory>

namespace kalmo::toolkit {
class ListRows;
}

namespace kalmo::obex {

/// The OBEX client: the session with a phone, its file system, transfers. One request and one response at a
/// time, on the caller's stack; each wait yields to the event loop. Operations return false if they failed,
/// after they have informed the user, unless the comment says otherwise. Each takes the displays that it
/// reports to, and any of them may be absent.
///
/// An operation that an event handler starts in the middle of another exchange on the same line does nothing,
/// fails and is logged. Owners share the client by std::shared_ptr, and an operation keeps it until its end.
/// Code that consists of several operations does the same with an Operation of its own.
class clsMmc : public QObject, public std::enable_shared_from_this<clsMmc>
{
    Q_OBJECT

public:
    class Operation; // clsMmcOperation.h, with those below
    class Uncancelled;
    class Quiet;
    class FirstFailure;
    class Busy;

    enum OnlineState { Connecting = 0, Connected = 1, Disconnected = 2 };
    enum Channel { ChannelMoving = 0, ChannelOpen = 1, ChannelClosed = 2 };

    /// The port of `line` has to be open when the first operation starts.
    explicit clsMmc(link::Line& line);
    ~clsMmc() override;

    link::Line& line() const { return m_line; }

    // --- session

    /// Opens the data channel and connects to `target`. After a failed connect the channel stays open. If an
    /// earlier session left the line in another state than AT commands, the phone is taken back to them
    /// first.
    bool Online(const toolkit::Progress& progress, Target target = Target::FlexMemory);
    /// Disconnects and closes the data channel. If the phone does not end the connection, the channel stays
    /// open. A connection that the phone refused is not disconnected.
    bool Offline(const toolkit::Progress& progress);
    /// Connects to a target on an open channel, which may be connected to the other one.
    bool connect(const toolkit::Progress& progress, Target target);

    /// Returns false after a wait that ended without the phone's answer. That answer may still come, and
    /// frames carry no number, so that it would be taken for the answer to the next request. Until
    /// getInStep() only the frames of Offline are sent. Every operation that is not part of another one gets
    /// in step first.
    bool isInStep() const { return m_inStep; }
    /// Connects again, since the answer to that is like no other, and goes back to the current folder.
    bool getInStep();

    OnlineState IsOnline() const { return m_isOnline; }
    Channel ChannelState() const { return m_channelState; }
    Target target() const { return m_target; } ///< of the last connect
    /// "Mobile:\" or a folder below it. Empty if the folder is not known. Then nothing that names something
    /// in the current folder is sent until CdRoot or CdUp.
    QString DirAct() const { return m_dirAct; }
    /// Largest frame that the phone accepts, as announced at the last connect and limited to 255 to 10000
    /// bytes.
    int MaxPacket() const { return m_maxPacket; }

    /// Timeout of a response in seconds. The default is 25.
    double RxTimeOut() const { return m_rxTimeOut; }
    void setRxTimeOut(double seconds) { m_rxTimeOut = seconds; }

    /// Result of the last request, as in ReCode: the reason of a failure.
    int lastCode() const { return m_lastCode; }
    /// Returns true if the frame of the last request was sent. The phone may have carried it out even if it
    /// did not answer.
    bool wasLastSent() const { return m_wasLastSent; }

    /// Ends the running operation at the next safe point, with code -3 and without a box about it. A transfer
    /// is aborted. From then on only the frames of Offline are sent, which also resets this.
    void askToStop() { m_stopAsked = true; }
    bool stopAsked() const { return m_stopAsked; }

    // --- folders

    /// Lists the current folder into `entries`, and into `list` as DirInLvw does it. `filter` as in
    /// parseFolderListing. `decoded` gets the listing's text.
    bool Dir(QList<tObxDirEntry>& entries, const toolkit::Progress& progress,
             toolkit::ListRows* list = nullptr, const QStringList* filter = nullptr,
             QString* decoded = nullptr);

    /// Goes down a path from the current folder, part by part. A leading "Mobile:\" is ignored. After a
    /// failure the client is in the last folder that it reached.
    bool Cd(const QString& path, bool allowCreation);
    bool CdRoot();
    /// Goes one folder up by the phone's own request. The client does not know the new folder, so CdRoot has
    /// to follow.
    bool CdNull();
    bool CdUp(); ///< goes to the root and down again
    /// Goes to the folder of single entries of the phonebook, the calendar, the notes. The last two are part
    /// of the described interface.
    bool CDluidPB();
    bool CDluidCAL();
    bool CDluidNT();
    bool Md(const QString& path); ///< makes folders and goes into them

    /// Deletes a file or an empty folder. `force` makes it deletable first. A silent failure shows no box.
    bool Del(const QString& name, const toolkit::Progress& progress, int* reCode = nullptr,
             bool silent = false, bool force = false);
    /// Take paths from the root. Moving is renaming.
    bool Rename(const QString& oldPath, const QString& newPath, const toolkit::Progress& progress);
    /// Permissions as letters, "RWD" for all.
    bool SetAttrib(const QString& name, const QString& group, const QString& user, bool silent);
    bool SetPermissionReadOnly(const QString& name);
    bool SetPermissionRWD(const QString& name);

    /// Capacities in bytes, 0 after a failure. With `useCache` an earlier answer since Online is returned if
    /// it is not 0. That of the memory card's total is part of the described interface.
    bool GetSpaceTotal(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceFree(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceTotalMmc(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceFreeMmc(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);

    /// Search the last listing, without regard to case. Show nothing. The first two are part of the
    /// described interface.
    bool IsFileInActDir(const QString& name) const;
    bool GetFileSizeInActDir(const QString& name, qint32& size) const;
    bool GetTimeStampFromFileInActDir(const QString& name, QDateTime& moment) const;

    /// Store the current folder, and go back to it. Part of the described interface.
    void DirActSave() { m_dirActSaved = m_dirAct; }
    bool DirActRestore();

    /// Adds up the files in a folder and all below it. Returns true if the client is back in `parent`, even
    /// after a failure on the way down. The cancel box ends the walk between two folders; a limit ends it for
    /// folders without an end. Part of the described interface.
    bool GetFolderInfosRec(const QString& folder, qint64& totalSize, int& fileCount,
                           const toolkit::Progress& progress, const QString& parent);

    // --- transfer

    /// Reads a file of the current folder, at most `largestObject` bytes. If `targetFile` is not empty the
    /// content is stored there too; it is a full local path, and the file is replaced whole or not at all. A
    /// silent failure shows no box, except for a timeout.
    bool GetFile(const QString& name, QByteArray& data, const toolkit::Progress& progress,
                 const QString& targetFile = {}, int* reCode = nullptr, bool silent = false);
    /// Stores the content of a file of the phone as GetFile does it. `modified` is the phone's time of it.
    bool SaveFile(const QByteArray& data, const QString& targetFile, const QDateTime& modified);
    /// Writes a local file into the current folder, without "," and ";" in its name. Part of the described
    /// interface.
    bool PutFile(const QString& localPath, const toolkit::Progress& progress);

    /// A file that PutBytes sends.
    struct PutObject
    {
        QString name; ///< in the current folder; "," and ";" are left out
        QByteArray bytes;
        QDateTime modified; ///< time for the phone; invalid for the present time
    };
    /// Facts about an upload.
    struct PutReport
    {
        bool mayHoldPart = false;  ///< it failed, and the phone may hold a part of the file
        bool stoppedEarly = false; ///< the phone reported success before the count of frames was reached
    };
    /// Does the same for bytes.
    bool PutBytes(const PutObject& object, const toolkit::Progress& progress, PutReport* report = nullptr);
    /// Ends a transfer between two of its frames.
    bool Abort();

    // --- single requests, for what builds on the client

    /// Sends a frame. Returns 0, or the local code for the reason why it was not sent. For a port that is
    /// gone that is `Timeout`, since no answer can come.
    int TxObx(const QByteArray& frame);
    /// Waits for one response and returns its code. After `RxTimeOut` seconds of silence, or at once if the
    /// port is gone, the code is -1 and the payload empty. After a fifth of that time LongTimeOutMsg starts
    /// to count down.
    int RxObxFra(QByteArray& payload);
    /// Does both.
    int request(const QByteArray& frame, QByteArray& payload);

    enum class PutVerdict { Next, Done, Failed };
    /// Sends an object frame by frame, and lets `judge` decide on each response's code. Returns the last code
    /// and gives its payload, or -3 if the user cancelled it. After it `frames` tells if the final frame was
    /// sent. If the phone keeps asking for more after the final frame, the transfer is aborted with the code
    /// NeverEnough.
    int Put(PutFrames& frames, QByteArray& payload, const std::function<PutVerdict(int code)>& judge);

    /// Writes a line of the debug log.
    void log(const QString& tag, const QString& text) const;
    /// Shows the text of a code, but none for the user's own wish. A lost port is reported once in an
    /// operation, for all its parts together.
    void ErrMsg(int code);
    /// Logs the decoding of a text by UFT8Dec, and shows that it ended in the middle of a letter.
    void noteDecoding(bool endsBroken);
    /// From now on to the end of the running operation, timeouts are shown once as well: the phone has
    /// confirmed a change, and more than one box would hide that.
    void showTimeoutsOnce() { m_showsTimeoutsOnce = true; }

    // Signals in the middle of operations. Handlers may show something, but start no operation.
Q_SIGNALS:
    void DirChange(const QString& folder);
    void BusyOn(); ///< emitted once, however operations are nested
    void BusyOff();
    void BytesRxed(qint64 count);
    void LongTimeOutMsg(const QString& text);

private:
    bool isRefused(const QString& operation) const;
    bool isFolderKnown();
    int noted(int code);
    bool gaveUp(double silence) const;
    int afterSilence(const QByteArray& buffer);
    void setDirAct(const QString& folder);

    bool disconnect();
    int receiveConnectAnswer(QByteArray& payload, bool isInStep);
    int leaveCommandMode();
    bool closeChannel();
    int stuckOrGone() const;
    void takeConnectAnswer(const QByteArray& payload);

    /// Sends a GET and receives all of its response. Returns the code as RxObxFra does, or the local code
    /// that ended it.
    int get(const QByteArray& frame, QByteArray& data);
    int ObxRx(QByteArray& data);
    void showBare(const QString& text, const QString& english);
    void showLengthNote();
    void showTotal(qint64 received, qint64 total);

    bool changeFolder(const QString& path, bool allowCreation);
    bool cdInto(const QStringList& parts);
    bool getSpace(int query, qint32& bytes, const toolkit::Progress& progress, bool useCache);
    QString decodeListing(const QString& raw);
    struct FolderWalk;
    bool walkFolder(const QString& folder, FolderWalk& walk, const QString& parent, int depth);
    const tObxDirEntry* fileInActDir(const QString& name) const;
    QString nameForPhone(const QString& name) const;

    int store(const QString& targetFile, const QByteArray& data, const QDateTime& modified);
    void stamp(const QString& targetFile, const QDateTime& modified);
    QDateTime listedTimeOf(const QString& name) const;
    bool put(const QString& localPath, const PutObject& object, int readCode, PutReport& report);
    int sendFile(const PutObject& object, int& value, int& maximum);
    void tellEarlyStop(const QString& name, int value, int maximum);

    link::Line& m_line;
    app::Context& m_context;
    ProgressRelay m_relay;
    toolkit::Progress m_progress; // of m_relay

    int m_depth = 0; // of nested operations
    int m_busy = 0;
    bool m_stopAsked = false;
    bool m_inStep = true;
    bool m_lossTold = false;          // by the operation that runs
    bool m_showsTimeoutsOnce = false; // the same
    bool m_pastStop = false;          // frames are sent even after a request to stop
    bool m_quiet = false;
    FirstFailure* m_firstFailure = nullptr; // that takes the codes in place of a box
    int m_lastCode = 0;
    bool m_wasLastSent = false;

    OnlineState m_isOnline = Connecting;
    bool m_hasConnection = false; // on this channel, to whichever target
    Channel m_channelState = ChannelMoving;
    Target m_target = Target::FlexMemory; // of the last connect
    double m_rxTimeOut = 25;
    int m_maxPacket = smallestPacket;
    QString m_dirAct;
    QString m_dirActSaved;
    QList<tObxDirEntry> m_files; // of the last listing
    qint32 m_space[4] = {};      // bytes, by query
};

} // namespace kalmo::obex
