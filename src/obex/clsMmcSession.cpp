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

/// The user's cancel box, or the wish that the operation may end.
struct StopBox : toolkit::CancelBox
{
    StopBox(const clsMmc& askedClient, const Progress& progress) : client(askedClient), box(progress.cancel)
    {
    }
    bool Checked() const override { return client.stopAsked() || (box && box->Checked()); }
    const clsMmc& client;
    CancelBox* box;
};

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
    StopBox stop(*this, m_progress);
    Progress stoppable = m_progress;
    stoppable.cancel = &stop;
    m_channelState = ChannelMoving;
    if (m_line.mode() != LineMode::Text && !recoverLine(m_line, stoppable)) {
        ErrMsg(stop.Checked() ? Cancelled : ChannelStuck);
        return false;
    }
    const bool opened = openDataChannel(m_line, stoppable);
    m_channelState = opened ? ChannelOpen : ChannelClosed;
    m_hasConnection = false;
    if (!opened)
        return false;
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
    QByteArray payload;
    int code = TxObx(connectFrame(target));
    m_progress.step();
    if (code == 0)
        code = RxObxFra(payload);
    if (isSuccess(code)) {
        takeConnectAnswer(payload);
        m_progress.status(displayName(target) + u" geöffnet."_s);
    } else {
        m_progress.status(displayName(target) + u" nicht geöffnet."_s);
        ErrMsg(code);
    }
    m_progress.hide();
    return isSuccess(code);
}

void clsMmc::takeConnectAnswer(const QByteArray& payload)
{
    const int announced = readConnectAnswer(payload).maxPacket;
    m_maxPacket = std::clamp(announced, smallestPacket, largestPacket);
    if (announced != m_maxPacket)
        log(u"Warning:"_s, u"MaxPacket=%1 is used as %2"_s.arg(announced).arg(m_maxPacket));
    std::fill(std::begin(m_space), std::end(m_space), 0);
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
            m_line.pause(0.75);
            m_line.pause(0.25);
            closed = closeChannel();
        }
    }
    m_stopAsked = m_abandoned;
    return closed;
}

bool clsMmc::disconnect()
{
    setDirAct({});
    m_isOnline = Connecting;
    m_progress.status(u"OBEX Verbindung wird geschlossen..."_s);
    QByteArray payload;
    const int code = request(disconnectFrame(), payload);
    if (isSuccess(code)) {
        m_isOnline = Disconnected;
        m_hasConnection = false;
        m_progress.status(u"OBEX Verbindung geschlossen."_s);
        return true;
    }
    ErrMsg(code);
    m_progress.status(u"OBEX Verbindung nicht geschlossen."_s);
    return false;
}

bool clsMmc::closeChannel()
{
    m_channelState = ChannelMoving;
    if (closeDataChannel(m_line, m_progress)) {
        m_channelState = ChannelClosed;
        return true;
    }
    ErrMsg(ChannelStuck);
    m_progress.status(u"Fehler beim Schließen des Datenkanals."_s);
    m_progress.hide();
    return false;
}

} // namespace kalmo::obex
