#pragma once

#include "obex/clsMmc.h"

#include <utility>

namespace kalmo::obex {

/// Seconds that most operations wait at their end.
inline constexpr double shortPause = 0.01;

/// Begins each operation of the client, and each that consists of several of them. Keeps the client until the
/// end, and passes its reports on to the receiver that it was begun with.
class clsMmc::Operation
{
public:
    /// For an operation without reports, or with those of the operation around it.
    Operation(clsMmc& client, const QString& name);
    Operation(clsMmc& client, const QString& name, const toolkit::Progress& progress);
    ~Operation();
    Q_DISABLE_COPY_MOVE(Operation)

    /// Returns false in an event handler in the middle of another exchange. The operation must not begin
    /// then.
    bool isAllowed() const { return m_allowed; }

    /// Returns true if the operation may send requests on a connection. The outermost operation gets in step
    /// first. Informs the user if it returns false.
    bool mayBegin() const { return m_allowed && (m_client.m_depth > 1 || m_client.getInStep()); }

    /// Receiver of the reports. Its cancel box has no effect while an Uncancelled exists.
    const toolkit::Progress& progress() const { return m_client.m_progress; }

private:
    clsMmc& m_client;
    std::shared_ptr<clsMmc> m_keep; // null if the owner holds the client otherwise
    toolkit::Progress m_outer;
    bool m_allowed;
};

/// While one exists the cancel box has no effect: the running request is carried out whole or not at all.
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

/// While one exists no box reports a failure: the caller looks at lastCode() and reports it.
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

/// While one exists it keeps the code of the first failure in place of the box about it, so that the caller
/// shows one box for all. The box about an upload that the phone ended early is shown all the same. Not for
/// failures within Quiet.
class clsMmc::FirstFailure
{
public:
    explicit FirstFailure(clsMmc& client)
        : m_client(client), m_outer(std::exchange(client.m_firstFailure, this))
    {
    }
    ~FirstFailure() { m_client.m_firstFailure = m_outer; }
    Q_DISABLE_COPY_MOVE(FirstFailure)

    int code() const { return m_code; } ///< 0 without a failure
    void note(int code) { m_code = m_code == 0 ? code : m_code; }

private:
    clsMmc& m_client;
    FirstFailure* m_outer;
    int m_code = 0;
};

/// Emits BusyOn now and BusyOff at the end, the outermost one only.
class clsMmc::Busy
{
public:
    explicit Busy(clsMmc& client);
    ~Busy() { off(); }
    Q_DISABLE_COPY_MOVE(Busy)

    void off(); ///< before the end of the operation

private:
    clsMmc& m_client;
    bool m_on = true;
};

} // namespace kalmo::obex
