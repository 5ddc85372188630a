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
/// time, on the caller's stack; each wait yields to the event loop. Operations return false when they failed
/// and have told the user then, unless it says otherwise. Each takes what it reports to, of which any part
/// may be absent.
///
/// An operation that an event handler starts in the middle of another exchange on the same line does nothing,
/// fails and is logged. An owner that may go in the middle of an operation holds its client by
/// std::shared_ptr and calls abandon() before it lets go: the operation keeps the client until it has ended.
/// What is built of several operations does the same with an Operation of its own.
class clsMmc : public QObject, public std::enable_shared_from_this<clsMmc>
{
    Q_OBJECT

public:
    class Operation; // clsMmcOperation.h, with those below
    class Uncancelled;
    class Quiet;
    class Busy;

    enum OnlineState { Connecting = 0, Connected = 1, Disconnected = 2 };
    enum Channel { ChannelMoving = 0, ChannelOpen = 1, ChannelClosed = 2 };

    /// `line` has to have its port open when the first operation starts.
    explicit clsMmc(link::Line& line);
    ~clsMmc() override;

    link::Line& line() const { return m_line; }

    // --- session

    /// Opens the data channel and connects to `target`. After a failed connect the channel stays open. A line
    /// that an earlier session left in another state than AT commands is taken back to them first.
    bool Online(const toolkit::Progress& progress, Target target = Target::FlexMemory);
    /// Disconnects and closes the data channel. If the phone does not let go of the connection, the channel
    /// stays open. A connection that never came about is not disconnected.
    bool Offline(const toolkit::Progress& progress);
    /// Connects to a target on an open channel, which may be connected to the other one.
    bool connect(const toolkit::Progress& progress, Target target);

    /// False once a wait has ended without the phone's answer. It may still come, and frames carry no number,
    /// so that it would be taken for the answer to the next request: until getInStep() nothing goes out but
    /// what Offline needs. Every operation that is not part of another one gets in step first.
    bool isInStep() const { return m_inStep; }
    /// Connects anew, which has an answer that is like no other, and goes back to the current folder.
    bool getInStep();

    OnlineState IsOnline() const { return m_isOnline; }
    Channel ChannelState() const { return m_channelState; }
    Target target() const { return m_target; } ///< of the last connect
    /// "Mobile:\" or a folder below it; empty where it is not known. Then nothing goes out that names
    /// something in the current folder, until CdRoot or CdUp.
    QString DirAct() const { return m_dirAct; }
    /// Largest frame that the phone accepts, as announced at the last connect and held between 255 and 10000
    /// bytes.
    int MaxPacket() const { return m_maxPacket; }

    /// Seconds of silence after which a wait ends; 25 unless somebody has set it. The programs do not ask
    /// yet.
    double RxTimeOut() const { return m_rxTimeOut; }
    void setRxTimeOut(double seconds) { m_rxTimeOut = seconds; }

    /// Result of the last request, as in ReCode: what an operation failed for.
    int lastCode() const { return m_lastCode; }
    /// Returns true if the frame of the last request went out. Without an answer to it the phone may have
    /// done what it asks for.
    bool wasLastSent() const { return m_wasLastSent; }

    /// Ends the running operation at the next safe point, with code -3 and without a box about it; a transfer
    /// is aborted. From then on nothing goes to the phone but what Offline needs, which also takes the wish
    /// back.
    void askToStop() { m_stopAsked = true; }
    bool stopAsked() const { return m_stopAsked; }
    /// The owner goes: asks to stop, and from now on nothing is reported to him and no box is shown.
    void abandon();
    bool isAbandoned() const { return m_abandoned; }

    // --- folders

    /// Lists the current folder into `entries`, and into `list` as DirInLvw does it. `filter` as in
    /// parseFolderListing; the programs give none yet. `decoded` gets the listing's text.
    bool Dir(QList<tObxDirEntry>& entries, const toolkit::Progress& progress,
             toolkit::ListRows* list = nullptr, const QStringList* filter = nullptr,
             QString* decoded = nullptr);

    /// Goes down a path from the current folder, part by part; a leading "Mobile:\" is passed over. After a
    /// failure the client is in the last folder that it reached.
    bool Cd(const QString& path, bool allowCreation);
    bool CdRoot();
    /// One folder up by the phone's own means. Where that is, the client does not know: CdRoot has to follow.
    bool CdNull();
    bool CdUp(); ///< by way of the root
    /// Into the folder of single entries of the phonebook, the calendar, the notes. The programs do not use
    /// the last two yet.
    bool CDluidPB();
    bool CDluidCAL();
    bool CDluidNT();
    bool Md(const QString& path); ///< makes folders and goes into them

    /// Deletes a file or an empty folder. `force` makes it deletable first. A silent failure shows no box.
    bool Del(const QString& name, const toolkit::Progress& progress, int* reCode = nullptr,
             bool silent = false, bool force = false);
    /// Paths from the root. Moving is renaming.
    bool Rename(const QString& oldPath, const QString& newPath, const toolkit::Progress& progress);
    /// Permissions as letters, "RWD" for all.
    bool SetAttrib(const QString& name, const QString& group, const QString& user, bool silent);
    bool SetPermissionReadOnly(const QString& name);
    bool SetPermissionRWD(const QString& name);

    /// Capacities in bytes; 0 after a failure. `useCache` gives an earlier answer since Online other
    /// than 0. The programs do not ask for the memory card's yet.
    bool GetSpaceTotal(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceFree(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceTotalMmc(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);
    bool GetSpaceFreeMmc(qint32& bytes, const toolkit::Progress& progress, bool useCache = false);

    /// Look into the last listing, without regard to case. Nothing is shown.
    bool IsFileInActDir(const QString& name) const;
    bool GetFileSizeInActDir(const QString& name, qint32& size) const;
    bool GetTimeStampFromFileInActDir(const QString& name, QDateTime& moment) const;

    /// Remembers the current folder, and goes back to it. The programs do not use it yet.
    void DirActSave() { m_dirActSaved = m_dirAct; }
    bool DirActRestore();

    /// Adds up the files in a folder and all below it. True if the way back to `parent` was found, whatever
    /// happened on the way down. The cancel box ends the walk between two folders, and so do folders without
    /// an end. The programs do not use it yet.
    bool GetFolderInfosRec(const QString& folder, qint64& totalSize, int& fileCount,
                           const toolkit::Progress& progress, const QString& parent);

    // --- transfer

    /// Reads a file of the current folder, at most `largestObject` bytes, into `targetFile` too if that is
    /// not empty: a full local path, replaced whole or not at all. Silent shows no box but that of a timeout.
    bool GetFile(const QString& name, QByteArray& data, const toolkit::Progress& progress,
                 const QString& targetFile = {}, int* reCode = nullptr, bool silent = false);
    /// Stores the content of a file of the phone as GetFile does it. `modified` is the phone's time of it.
    bool SaveFile(const QByteArray& data, const QString& targetFile, const QDateTime& modified);
    /// Writes a local file into the current folder, without "," and ";" in its name.
    bool PutFile(const QString& localPath, const toolkit::Progress& progress);

    /// A file that PutBytes sends.
    struct PutObject
    {
        QString name; ///< in the current folder; "," and ";" are left out
        QByteArray bytes;
        QDateTime modified; ///< time that the phone gets; invalid for now
    };
    /// Facts about an upload.
    struct PutReport
    {
        bool mayHoldPart = false;  ///< it failed, and the phone may have taken a part of the file
        bool stoppedEarly = false; ///< the phone said that it has all before the count of frames was reached
    };
    /// The same for bytes.
    bool PutBytes(const PutObject& object, const toolkit::Progress& progress, PutReport* report = nullptr);
    /// Ends a transfer between two of its frames.
    bool Abort();

    // --- single requests, for what builds on the client

    /// Hands a frame to the line. 0, or the local code that says why it did not go out: `Timeout` for a port
    /// that is gone, since no answer can come.
    int TxObx(const QByteArray& frame);
    /// Waits for one response and gives its code; -1 with an empty payload after `RxTimeOut` seconds of
    /// silence, or at once if the port is gone. From a fifth of that on LongTimeOutMsg counts down.
    int RxObxFra(QByteArray& payload);
    /// Both in one.
    int request(const QByteArray& frame, QByteArray& payload);

    enum class PutVerdict { Next, Done, Failed };
    /// Sends an object frame by frame, and lets `judge` decide on each response's code. Gives the last code
    /// and its payload, or -3 if the user cancelled it. `frames` knows in the end whether the final one went
    /// out. The transfer to a phone that keeps asking for more after the final frame is aborted, with the
    /// code NeverEnough.
    int Put(PutFrames& frames, QByteArray& payload, const std::function<PutVerdict(int code)>& judge);

    /// Writes a line of the debug log.
    void log(const QString& tag, const QString& text) const;
    /// Shows what a code means. A lost port is reported once in an operation, for all its parts together.
    void ErrMsg(int code);
    /// From now on to the end of the running operation, timeouts are shown once as well: the phone has
    /// confirmed a change, and more than one box would hide that.
    void showTimeoutsOnce() { m_showsTimeoutsOnce = true; }

    // Raised in the middle of operations: handlers show something, and start none.
Q_SIGNALS:
    void DirChange(const QString& folder);
    void BusyOn(); ///< raised once, however operations are nested
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

    /// Sends a GET and receives all of its response. The code as in RxObxFra, or what ended it on this side.
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
    bool m_abandoned = false;
    bool m_inStep = true;
    bool m_lossTold = false;          // in the operation that runs
    bool m_showsTimeoutsOnce = false; // the same
    bool m_pastStop = false;          // what goes out now has to in spite of the wish to stop
    bool m_quiet = false;
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
