// Whole files and objects, there and back.

#include "app/Files.h"
#include "app/Version.h"
#include "obex/cFileSystemTimes.h"
#include "obex/clsMmcOperation.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include <algorithm>

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using app::ReplaceResult;
using toolkit::Icon;
using toolkit::Progress;

namespace {

constexpr int stepsOfFirstFrame = 2;
constexpr int mostFinalFrames = 10; // a phone that never has enough
constexpr int timeNotSet = 75;      // in the log, where a time stamp could not be set

int readForUpload(const QString& path, QByteArray& body)
{
    if (QFileInfo(path).size() > largestObject)
        return TooMuchData;
    return app::readWholeFile(path, body) ? 0 : ReadFailed;
}

} // namespace

bool clsMmc::GetFile(const QString& name, QByteArray& data, const Progress& progress,
                     const QString& targetFile, int* reCode, bool silent)
{
    data.clear();
    if (reCode)
        *reCode = ChannelNotOpen;
    const Operation operation(*this, u"GetFile"_s, progress);
    if (!operation.mayBegin())
        return false;
    if (reCode)
        *reCode = Cancelled;
    log(u"Enter"_s, u"Function=GetFile ("_s + name + u')');
    m_progress.status(u"Empfange "_s + name + u"..."_s);
    Busy busy(*this);
    QByteArray received;
    int code = get(getFrame(name), received);
    if (isSuccess(code) && !targetFile.isEmpty())
        code = store(name, targetFile, received);
    if (!m_abandoned) {
        data = std::move(received);
        if (reCode)
            *reCode = code;
    }
    if (isSuccess(code)) {
        m_progress.status(u"Download "_s + name + u" abgeschlossen."_s);
    } else {
        m_progress.status(u"Download "_s + name + u" nicht abgeschlossen."_s);
        if (!silent || code == Timeout)
            ErrMsg(code);
    }
    m_line.pause(shortPause);
    busy.off();
    if (code == DeleteFailed)
        log(u"Exit"_s, u"Function=GetFile KillError"_s);
    else
        log(u"RawData"_s, u"File="_s + name + u" Begin >"_s);
    return isSuccess(code);
}

bool clsMmc::SaveFile(const QString& name, const QByteArray& data, const QString& targetFile)
{
    const int code = store(name, targetFile, data);
    if (code == DeleteFailed)
        log(u"Exit"_s, u"Function=GetFile KillError"_s);
    if (!isSuccess(code))
        ErrMsg(code);
    return isSuccess(code);
}

int clsMmc::store(const QString& name, const QString& targetFile, const QByteArray& data)
{
    const ReplaceResult result = app::replaceFile(m_context, targetFile, data);
    if (result == ReplaceResult::Written) {
        stamp(name, targetFile);
        return Success;
    }
    return result == ReplaceResult::NotReplaced ? DeleteFailed : WriteFailed;
}

/// Gives a downloaded file its age in the phone. A phone whose clock was never set says 2001 or earlier.
void clsMmc::stamp(const QString& name, const QString& targetFile)
{
    QDateTime moment;
    if (!GetTimeStampFromFileInActDir(name, moment) || moment <= QDateTime(QDate(2001, 1, 1), QTime(0, 0)))
        return;
    if (cFileSystemTimes(targetFile).SetDateCreated(moment))
        return;
    if (!m_abandoned) {
        m_line.show({.text = u"Fehler beim Setzen des Zeitstempels."_s,
                     .title = app::productName(),
                     .icon = Icon::Exclamation,
                     .english = u"The time stamp of %1 could not be set."_s.arg(targetFile)});
    }
    log(u"Error"_s, u"Proc: GetFile(SetTS), Err=%1 File="_s.arg(timeNotSet) + targetFile + u" TimeStamp="_s +
                        moment.toString(Qt::ISODate));
}

bool clsMmc::PutFile(const QString& localPath, const Progress& progress, bool* mayHoldPart)
{
    if (mayHoldPart)
        *mayHoldPart = false;
    const Operation operation(*this, u"PutFile"_s, progress);
    if (!operation.mayBegin())
        return false;
    log(u"Enter"_s, u"PutFile ("_s + localPath + u')');
    Busy busy(*this);
    QString name = QFileInfo(localPath).fileName();
    m_progress.status(u"Übertrage "_s + name + u"..."_s);
    name.remove(u',').remove(u';'); // the phones cannot handle them
    QByteArray body;
    int value = 1;
    int maximum = 1;
    int code = readForUpload(localPath, body);
    if (code == 0)
        code = sendFile(name, body, value, maximum);
    const bool stoppedEarly = isSuccess(code) && value != maximum;
    if (mayHoldPart && !m_abandoned)
        *mayHoldPart = stoppedEarly || code == Timeout || code == Cancelled || value > stepsOfFirstFrame;
    if (stoppedEarly) {
        tellEarlyStop(name, value, maximum);
        log(u"ExitEarly"_s,
            u"PutFile ("_s + localPath + u")=%1;  PckMax=%2  PckDone=%3"_s.arg(code).arg(maximum).arg(value));
    }
    m_progress.hide();
    const bool done = isSuccess(code) && !stoppedEarly;
    m_progress.status(u"Übertragung "_s + name +
                      (done                ? u" abgeschlossen."_s
                       : code == Cancelled ? u" abgebrochen."_s
                                           : u" nicht abgeschlossen."_s));
    busy.off();
    if (stoppedEarly)
        return false;
    log(u"Exit"_s, u"PutFile ("_s + localPath + u")="_s + QString::number(code));
    if (done)
        m_line.pause(shortPause);
    else
        ErrMsg(code);
    return done;
}

int clsMmc::sendFile(const QString& name, const QByteArray& body, int& value, int& maximum)
{
    const QString sent = nameForPhone(name);
    const int firstChunk = std::max(fileFirstChunkSize(m_maxPacket, sent), 0);
    PutFrames frames(nameHeader(sent) + lengthHeader(body) + timeHeader(m_context.clock.Now()), body,
                     firstChunk, m_maxPacket, PutFrames::AfterFinal::Repeat);
    maximum = filePutSteps(body.size(), firstChunk, nextChunkSize(m_maxPacket));
    m_progress.start(value, maximum);
    value = stepsOfFirstFrame;
    m_progress.set(value);
    QByteArray payload;
    return Put(frames, payload, [&](int code) {
        if (isSuccess(code))
            return PutVerdict::Done;
        if (code != Continue)
            return PutVerdict::Failed;
        m_progress.set(++value);
        return PutVerdict::Next;
    });
}

void clsMmc::tellEarlyStop(const QString& name, int value, int maximum)
{
    if (m_abandoned)
        return;
    const QString text =
        u"Das Telefon hat behauptet, bereits die komplette Datei \"%1\" erhalten zu haben, obwohl erst %2 "
        u"von %3 Teilen übertragen wurden.\n"
        u"Höchstwahrscheinlich ist die Datei damit auf dem Telefon unbrauchbar. Löschen Sie die Datei im "
        u"Telefon und übertragen Sie sie erneut.\n"
        u"Tritt dieser Fehler sofort wieder auf, muß das Telefon einmal aus- und wieder eingeschaltet und "
        u"%4 neu gestartet werden. Hilft auch diese Prozedur nicht, wenden Sie sich bitte an den "
        u"Programmautor."_s;
    const QString english =
        u"The phone claims to have all of %1 after %2 of %3 parts. Delete it in the phone and send it "
        u"again."_s;
    const QString sent = QString::number(value);
    const QString all = QString::number(maximum);
    m_line.show({.text = text.arg(name, sent, all, app::productName()),
                 .title = app::productName() + u" - OBEX Übertragungsfehler"_s,
                 .icon = Icon::Exclamation,
                 .english = english.arg(name, sent, all)});
}

int clsMmc::Put(PutFrames& frames, QByteArray& payload, const std::function<PutVerdict(int code)>& judge)
{
    if (const int refusal = TxObx(frames.first())) {
        frames.setUnsent();
        return refusal;
    }
    for (int finalFrames = 0;;) {
        const int code = RxObxFra(payload);
        if (m_progress.cancelled() || code == Cancelled)
            break;
        if (judge(code) != PutVerdict::Next)
            return code;
        if (frames.isFinalOut() && ++finalFrames > mostFinalFrames)
            return code;
        const int refusal = TxObx(frames.next());
        if (refusal == 0)
            continue;
        frames.setUnsent();
        if (refusal != Cancelled)
            return refusal;
        break;
    }
    Abort();
    return Cancelled;
}

bool clsMmc::Abort()
{
    const Operation operation(*this, u"Abort"_s);
    if (!operation.isAllowed())
        return false;
    log(u"Enter"_s, u"Abort"_s);
    const Busy busy(*this);
    int code = 0;
    {
        const QScopedValueRollback inSpite(m_pastStop, true);
        code = TxObx(abortFrame());
    }
    QByteArray payload;
    if (code == 0)
        code = RxObxFra(payload); // whoever has asked to stop waits no longer for this answer than for others
    if (code != Success && !m_stopAsked)
        ErrMsg(code);
    log(u"Exit"_s, u"Abort="_s + QString::number(code));
    return code == Success;
}

} // namespace kalmo::obex
