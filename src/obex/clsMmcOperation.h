#pragma once

#include "obex/clsMmc.h"

#include <utility>

namespace kalmo::obex {

/// Seconds that most operations wait at their end.
inline constexpr double shortPause = 0.01;

/// Stands at the start of each operation of the client, and of each that is built of several of them. Keeps
/// the client until it ends, and passes on what it reports for as long as there is somebody to hear it.
class clsMmc::Operation
{
public:
    /// For what reports to nobody, or to whom the operation around it reports.
    Operation(clsMmc& client, const QString& name);
    Operation(clsMmc& client, const QString& name, const toolkit::Progress& progress);
    ~Operation();
    Q_DISABLE_COPY_MOVE(Operation)

    /// False in an event handler in the middle of another exchange: the operation must not begin.
    bool isAllowed() const { return m_allowed; }

    /// The same for what sends requests on a connection; the outermost operation gets in step first. False
    /// has been told then.
    bool mayBegin() const { return m_allowed && (m_client.m_depth > 1 || m_client.getInStep()); }

    /// Where to report. The caller's own progress may be gone after any yield.
    const toolkit::Progress& progress() const { return m_client.m_progress; }

private:
    clsMmc& m_client;
    std::shared_ptr<clsMmc> m_keep; // null where the owner holds the client otherwise
    toolkit::Progress m_outer;
    bool m_allowed;
};

/// While one lives the cancel box has no say: what is under way is done whole or not at all.
class clsMmc::Uncancelled
{
public:
    explicit Uncancelled(clsMmc& client) : m_relay(client.m_relay), m_wasOn(m_relay.setCancelOn(false)) {}
    ~Uncancelled() { m_relay.setCancelOn(m_wasOn); }
    Q_DISABLE_COPY_MOVE(Uncancelled)

private:
    ProgressRelay& m_relay;
    bool m_wasOn;
};

/// While one lives no box tells of a failure: the caller looks at lastCode() and reports it.
class clsMmc::Quiet
{
public:
    explicit Quiet(clsMmc& client) : m_client(client), m_was(std::exchange(client.m_quiet, true)) {}
    ~Quiet() { m_client.m_quiet = m_was; }
    Q_DISABLE_COPY_MOVE(Quiet)

private:
    clsMmc& m_client;
    bool m_was;
};

/// BusyOn now and BusyOff at the end, raised by the outermost only.
class clsMmc::Busy
{
public:
    explicit Busy(clsMmc& client);
    ~Busy() { off(); }
    Q_DISABLE_COPY_MOVE(Busy)

    void off(); ///< before the end

private:
    clsMmc& m_client;
    bool m_on = true;
};

} // namespace kalmo::obex
