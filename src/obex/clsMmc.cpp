#include "obex/clsMmc.h"

#include "obex/clsMmcOperation.h"

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using toolkit::Progress;

clsMmc::clsMmc(link::Line& line) : m_line(line), m_context(line.context()), m_progress(m_relay.progress()) {}

clsMmc::~clsMmc()
{
    Q_ASSERT(m_depth == 0);
}

void clsMmc::log(const QString& tag, const QString& text) const
{
    m_context.log.WriteDebugLog(tag, text);
}

bool clsMmc::isRefused(const QString& operation) const
{
    if (m_line.isWaiting())
        log(u"Warning:"_s, operation + u" refused, another exchange is under way"_s);
    return m_line.isWaiting();
}

/// Returns false, and informs the user, if the client does not know its folder: a name would reach a file of
/// that name in another folder.
bool clsMmc::isFolderKnown()
{
    if (!m_dirAct.isEmpty() || m_isOnline != Connected || m_stopAsked) // the last two send nothing anyway
        return true;
    m_wasLastSent = false;
    ErrMsg(noted(FolderUnknown));
    return false;
}

int clsMmc::noted(int code)
{
    m_lastCode = code;
    return code;
}

void clsMmc::ErrMsg(int code)
{
    const bool isOwnWish = code == Cancelled;
    const bool isLoss = code == Timeout && (m_showsTimeoutsOnce || !m_line.port().IsOpen());
    const bool isTold = isLoss && std::exchange(m_lossTold, true);
    const bool isToShow = !isOwnWish && !isTold && !m_quiet;
    if (isToShow && m_firstFailure) {
        m_firstFailure->note(code);
    } else if (isToShow) {
        m_line.show(failureMessage(code));
    }
    log(u"Warning:"_s, u"ErrCode: &H"_s + hexCode(code));
}

clsMmc::Operation::Operation(clsMmc& client, const QString& name)
    : Operation(client, name, client.m_relay.target())
{
}

clsMmc::Operation::Operation(clsMmc& client, const QString& name, const Progress& progress)
    : m_client(client), m_keep(client.weak_from_this().lock()), m_outer(client.m_relay.target()),
      m_allowed(!client.isRefused(name))
{
    if (client.m_depth++ == 0)
        client.m_lossTold = client.m_showsTimeoutsOnce = false;
    if (!m_allowed) {
        client.m_wasLastSent = false;
        client.m_lastCode = ChannelNotOpen;
    }
    if (m_allowed)
        client.m_relay.setTarget(progress);
}

clsMmc::Operation::~Operation()
{
    --m_client.m_depth;
    if (m_allowed)
        m_client.m_relay.setTarget(m_outer);
}

clsMmc::Busy::Busy(clsMmc& client) : m_client(client)
{
    if (m_client.m_busy++ == 0)
        Q_EMIT m_client.BusyOn();
}

void clsMmc::Busy::off()
{
    if (std::exchange(m_on, false) && --m_client.m_busy == 0)
        Q_EMIT m_client.BusyOff();
}

} // namespace kalmo::obex
