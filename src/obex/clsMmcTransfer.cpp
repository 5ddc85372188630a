// Transfer of whole files and objects in both directions.

#include "app/Files.h"
#include "app/Version.h"
#include "obex/cFileSystemTimes.h"
#include "obex/clsMmcOperation.h"
#include "obex/PhonePath.h"

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
constexpr int mostFinalFrames = 10; // frames for a phone that keeps asking for more
constexpr int timeNotSet = 75;      // for the log, if a time stamp could not be set

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
    if (!name.contains(u'/') && !isFolderKnown())
        return false;
    log(u"Enter"_s, u"Function=GetFile ("_s + name + u')');
    m_progress.status(u"Empfange "_s + name + u"..."_s);
    Busy busy(*this);
    QByteArray received;
    int code = get(getFrame(name), received);
    if (isSuccess(code) && !targetFile.isEmpty())
        code = store(targetFile, received, listedTimeOf(name));
    data = std::move(received);
    if (reCode)
        *reCode = code;
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

bool clsMmc::SaveFile(const QByteArray& data, const QString& targetFile, const QDateTime& modified)
{
    const int code = store(targetFile, data, modified);
    if (code == DeleteFailed)
        log(u"Exit"_s, u"Function=GetFile KillError"_s);
    if (!isSuccess(noted(code)))
        ErrMsg(code);
    return isSuccess(code);
}

QDateTime clsMmc::listedTimeOf(const QString& name) const
{
    QDateTime moment;
    return GetTimeStampFromFileInActDir(name, moment) ? moment : QDateTime();
}

int clsMmc::store(const QString& targetFile, const QByteArray& data, const QDateTime& modified)
{
    const ReplaceResult result = app::replaceFile(m_context, targetFile, data);
    if (result == ReplaceResult::Written) {
        stamp(targetFile, modified);
        return Success;
    }
    return result == ReplaceResult::NotReplaced ? DeleteFailed : WriteFailed;
}

/// Sets a downloaded file's time to that in the phone. A phone whose clock was never set says 2001 or
/// earlier.
void clsMmc::stamp(const QString& targetFile, const QDateTime& modified)
{
    if (!modified.isValid() || modified <= QDateTime(QDate(2001, 1, 1), QTime(0, 0)))
        return;
    if (cFileSystemTimes(targetFile).SetDateCreated(modified))
        return;
    m_line.show({.text = u"Fehler beim Setzen des Zeitstempels."_s,
                 .title = app::productName(),
                 .icon = Icon::Exclamation,
                 .english = u"could not set the time of %1."_s.arg(targetFile)});
    log(u"Error"_s, u"Proc: GetFile(SetTS), Err=%1 File="_s.arg(timeNotSet) + targetFile + u" TimeStamp="_s +
                        modified.toString(Qt::ISODate));
}

bool clsMmc::PutFile(const QString& localPath, const Progress& progress)
{
    const Operation operation(*this, u"PutFile"_s, progress);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    PutObject object{.name = QFileInfo(localPath).fileName(), .bytes = {}, .modified = {}};
    const int readCode = readForUpload(localPath, object.bytes);
    PutReport report;
    return put(localPath, object, readCode, report);
}

bool clsMmc::PutBytes(const PutObject& object, const Progress& progress, PutReport* report)
{
    if (report)
        *report = {};
    const Operation operation(*this, u"PutBytes"_s, progress);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    const int readCode = object.bytes.size() > largestObject ? TooMuchData : 0;
    PutReport facts;
    const bool done = put(object.name, object, readCode, facts);
    if (report)
        *report = facts;
    return done;
}

/// `readCode` is other than 0 where the bytes could not be read.
bool clsMmc::put(const QString& localPath, const PutObject& object, int readCode, PutReport& report)
{
    log(u"Enter"_s, u"PutFile ("_s + localPath + u')');
    Busy busy(*this);
    m_wasLastSent = false;
    m_progress.status(u"Übertrage "_s + object.name + u"..."_s);
    const QString name = nameAsSent(object.name);
    int value = 1;
    int maximum = 1;
    int code = readCode;
    if (code == 0)
        code = sendFile({name, object.bytes, object.modified}, value, maximum);
    noted(code);
    report.stoppedEarly = isSuccess(code) && value != maximum;
    const bool isOpen = code == Timeout || code == Cancelled || code == NeverEnough;
    report.mayHoldPart = report.stoppedEarly || value > stepsOfFirstFrame || (isOpen && m_wasLastSent);
    if (report.stoppedEarly) {
        tellEarlyStop(name, value, maximum);
        log(u"ExitEarly"_s,
            u"PutFile ("_s + localPath + u")=%1;  PckMax=%2  PckDone=%3"_s.arg(code).arg(maximum).arg(value));
    }
    m_progress.hide();
    const bool done = isSuccess(code) && !report.stoppedEarly;
    m_progress.status(u"Übertragung "_s + name +
                      (done                ? u" abgeschlossen."_s
                       : code == Cancelled ? u" abgebrochen."_s
                                           : u" nicht abgeschlossen."_s));
    busy.off();
    if (report.stoppedEarly)
        return false;
    log(u"Exit"_s, u"PutFile ("_s + localPath + u")="_s + QString::number(code));
    if (done)
        m_line.pause(shortPause);
    else
        ErrMsg(code);
    return done;
}

int clsMmc::sendFile(const PutObject& object, int& value, int& maximum)
{
    const QString sent = nameForPhone(object.name);
    const QDateTime time = object.modified.isValid() ? object.modified : m_context.clock.Now();
    const int firstChunk = std::max(fileFirstChunkSize(m_maxPacket, sent), 0);
    PutFrames frames(nameHeader(sent) + lengthHeader(object.bytes) + timeHeader(time), object.bytes,
                     firstChunk, m_maxPacket, PutFrames::AfterFinal::Repeat);
    maximum = filePutSteps(object.bytes.size(), firstChunk, nextChunkSize(m_maxPacket));
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
    if (m_quiet)
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
        u"The phone says that it has all of %1 after %2 of %3 parts; the size in its folder tells."_s;
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
        return noted(refusal);
    }
    for (int finalFrames = 0;;) {
        const int code = RxObxFra(payload);
        if (m_progress.cancelled() || code == Cancelled)
            break;
        if (judge(code) != PutVerdict::Next)
            return noted(code);
        if (frames.isFinalOut() && ++finalFrames > mostFinalFrames) {
            Abort(); // otherwise the next request would count as part of this one
            return noted(NeverEnough);
        }
        const int refusal = TxObx(frames.next());
        if (refusal == 0)
            continue;
        frames.setUnsent();
        if (refusal != Cancelled)
            return noted(refusal);
        break;
    }
    Abort();
    return noted(Cancelled);
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
        code = RxObxFra(payload); // after a request to stop the timeout is short here as elsewhere
    if (code != Success && !m_stopAsked)
        ErrMsg(code);
    log(u"Exit"_s, u"Abort="_s + QString::number(code));
    return code == Success;
}

} // namespace kalmo::obex
