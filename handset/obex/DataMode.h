#pragma once

#include "handset/obex/EscapeWatch.h"
#include "handset/obex/ObexServer.h"

namespace kalmo::handset {

/// The handset in data mode: cuts requests out of the bytes that come, answers them one at a time, and
/// watches for the way back to command mode. It does not notice that a client is gone.
class DataModeLayer
{
public:
    struct Line
    {
        std::function<void(const QByteArray&)> send;
        std::function<void()> enterCommandMode;
    };

    DataModeLayer(Phone& phone, TimeSource& time, Line line);

    void receive(const QByteArray& bytes);
    /// The last byte sent has passed the line.
    void outputDrained();
    /// The client is gone. The next one can't know the mode of the handset.
    void clientLeft();
    /// Resets to the start of data mode.
    void reset();

private:
    enum class State { Waiting, Working, Answering };

    void take(const QByteArray& bytes);
    void takeRequests();
    void checkStart();
    void run(const QByteArray& request);
    void send(QByteArray frame);
    void complain(const QString& what) { m_phone.violations.record(what); }

    Phone& m_phone;
    Timers m_timers;
    Line m_line;
    EscapeWatch m_escape;
    ObexServer m_server;
    State m_state = State::Waiting;
    QByteArray m_buffer;
    bool m_leaves = false;       // after the answer that is on its way
    bool m_disturbed = false;    // the client did not wait for it
    bool m_startChecked = false; // of the request in the buffer
    bool m_isFirst = true;       // no request came yet
    double m_opened = 0;         // when data mode began
    bool m_orphaned = false;
};

} // namespace kalmo::handset
