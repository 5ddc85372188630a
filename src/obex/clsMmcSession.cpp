// The way from AT commands into a connection and back.

#include "obex/clsMmcOperation.h"
#include "obex/DataChannel.h"
#include "obex/ResponseFrame.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using link::LineMode;
using toolkit::Progress;

namespace {

/// The user's cancel box, or a request to stop.
struct StopBox : toolkit::CancelBox
{
    StopBox(const clsMmc& askedClient, const Progress& progress) : client(askedClient), box(progress.cancel)
    {
    }
    bool Checked() const override { return client.stopAsked() || (box && box->Checked()); }
    const clsMmc& client;
    CancelBox* box;
};

constexpr int mostLateAnswers = 5;

QString displayName(Target target)
{
    return target == Target::IrMC ? u"IrMC"_s : u"FlexMemory / MMC"_s;
}

} // namespace

void clsMmc::setDirAct(const QString& folder)
{
    m_dirAct = folder;
    Q_EMIT DirChange(folder);
}

bool clsMmc::Online(const Progress& progress, Target target)
{
    const Operation operation(*this, u"Online"_s, progress);
    if (!operation.isAllowed() || m_stopAsked)
        return false;
    const Busy busy(*this);
    if (!m_line.port().IsOpen()) {
        ErrMsg(Timeout);
        return false;
    }
    StopBox stop(*this, m_progress);
    Progress stoppable = m_progress;
    stoppable.cancel = &stop;
    m_channelState = ChannelMoving;
    if (m_line.mode() != LineMode::Text && !recoverLine(m_line, stoppable)) {
        ErrMsg(stop.Checked() ? Cancelled : stuckOrGone());
        return false;
    }
    const ChannelOpening opening = openDataChannel(m_line, stoppable);
    m_hasConnection = false;
    if (opening != ChannelOpening::Opened) {
        if (opening == ChannelOpening::Stuck)
            ErrMsg(stuckOrGone());
        else
            m_channelState = ChannelClosed;
        return false;
    }
    m_channelState = ChannelOpen;
    m_inStep = true;
    std::fill(std::begin(m_space), std::end(m_space), 0);
    if (m_stopAsked) {
        closeChannel();
        return false;
    }
    m_line.pause(0.15);
    return connect(progress, target);
}

bool clsMmc::connect(const Progress& progress, Target target)
{
    const Operation operation(*this, u"connect"_s, progress);
    if (!operation.isAllowed())
        return false;
    m_isOnline = Connecting;
    m_progress.start(0, 1);
    m_progress.status(displayName(target) + u" wird geöffnet..."_s);
    m_target = target;
    const bool wasInStep = std::exchange(m_inStep, true);
    QByteArray payload;
    const QByteArray frame = connectFrame(target);
    int code = TxObx(frame);
    m_progress.step();
    if (code == 0)
        code = receiveConnectAnswer(payload, wasInStep);
    else
        m_inStep = wasInStep;
    // A phone in command mode echoes all bytes.
    if (code == static_cast<uchar>(frame[0]) && payload.startsWith(frame.sliced(responseHeadSize)))
        code = leaveCommandMode();
    if (isSuccess(noted(code))) {
        takeConnectAnswer(payload);
        m_progress.status(displayName(target) + u" geöffnet."_s);
    } else {
        m_progress.status(displayName(target) + u" nicht geöffnet."_s);
        ErrMsg(code);
    }
    m_progress.hide();
    return isSuccess(code);
}

/// If the client is out of step, ignores late answers to earlier requests.
int clsMmc::receiveConnectAnswer(QByteArray& payload, bool isInStep)
{
    int code = RxObxFra(payload);
    for (int late = 0; !isInStep && code >= 0 && !isConnectAnswer(payload); ++late) {
        log(u"Warning:"_s, u"A late answer is passed over: &H"_s + hexCode(code));
        code = late < mostLateAnswers ? RxObxFra(payload) : Timeout;
    }
    m_inStep = m_inStep && code >= 0;
    return code;
}

bool clsMmc::getInStep()
{
    if (m_inStep || m_isOnline != Connected || m_stopAsked) // nothing would be sent
        return true;
    const QString folder = withoutRoot(m_dirAct);
    const Operation operation(*this, u"getInStep"_s);
    const Busy busy(*this); // connect() raises nothing itself
    const bool isBack =
        operation.isAllowed() && connect(m_progress, m_target) && (folder.isEmpty() || Cd(folder, false));
    m_wasLastSent = m_wasLastSent && isBack; // the operation that follows sends nothing
    return isBack;
}

/// The phone has refused its data mode and takes commands. It may have taken the frame as the start of one.
int clsMmc::leaveCommandMode()
{
    m_channelState = ChannelMoving;
    if (!recoverLine(m_line, m_progress))
        return stuckOrGone();
    m_channelState = ChannelClosed;
    return ChannelRefused;
}

void clsMmc::takeConnectAnswer(const QByteArray& payload)
{
    const int announced = readMaxPacket(payload);
    m_maxPacket = std::clamp(announced, smallestPacket, largestPacket);
    if (announced != m_maxPacket)
        log(u"Warning:"_s, u"MaxPacket=%1 is used as %2"_s.arg(announced).arg(m_maxPacket));
    m_isOnline = Connected;
    m_hasConnection = true;
    setDirAct(rootPath());
}

bool clsMmc::Offline(const Progress& progress)
{
    const Operation operation(*this, u"Offline"_s, progress);
    if (!operation.isAllowed())
        return false;
    const Busy busy(*this);
    bool closed = false;
    {
        const QScopedValueRollback inSpite(m_pastStop, true);
        if (!m_hasConnection || disconnect()) {
            m_line.pause(0.75); // two pauses on purpose: both belong to the protocol
            m_line.pause(0.25);
            closed = closeChannel();
        }
    }
    m_stopAsked = false;
    return closed;
}

bool clsMmc::disconnect()
{
    setDirAct({});
    m_isOnline = Connecting;
    m_progress.status(u"OBEX Verbindung wird geschlossen..."_s);
    QByteArray payload;
    const int code = request(disconnectFrame(), payload);
    const bool mayBeLate = !m_inStep && code >= 0; // the phone's own answer follows it then
    if (isSuccess(code) || mayBeLate) {
        m_isOnline = Disconnected;
        m_hasConnection = false;
        m_progress.status(u"OBEX Verbindung geschlossen."_s);
        return true;
    }
    m_hasConnection = false; // the next try does not wait for the phone: it closes the channel alone
    ErrMsg(code);
    m_progress.status(u"OBEX Verbindung nicht geschlossen."_s);
    return false;
}

/// Code for a line that does not change its mode: the phone does not answer, or the port is gone.
int clsMmc::stuckOrGone() const
{
    return m_line.port().IsOpen() ? ChannelStuck : Timeout;
}

bool clsMmc::closeChannel()
{
    m_channelState = ChannelMoving;
    if (closeDataChannel(m_line, m_progress)) {
        m_channelState = ChannelClosed;
        return true;
    }
    const int code = stuckOrGone();
    if (code == Timeout)
        m_channelState = ChannelOpen;
    ErrMsg(code);
    m_progress.status(u"Fehler beim Schließen des Datenkanals."_s);
    m_progress.hide();
    return false;
}

} // namespace kalmo::obex
