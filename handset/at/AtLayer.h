#pragma once

#include "handset/at/AtCommand.h"
#include "handset/at/PauseWatch.h"
#include "handset/Timers.h"

namespace kalmo::handset {

/// The handset in command mode: puts command lines together, echoes them, runs them and answers, one at a
/// time.
class AtLayer
{
public:
    /// The layer's actions on the line.
    struct Line
    {
        std::function<void(const QByteArray&)> send;
        std::function<void()> hangUp;
        std::function<void()> enterDataMode; ///< after the answer has been sent
    };

    AtLayer(Phone& phone, TimeSource& time, Line line);

    void receive(const QByteArray& bytes);
    /// The last byte sent has passed the line.
    void outputDrained();
    /// Resets to the state after switching on.
    void reset();

private:
    enum class State { Reading, Running, Answering };

    /// Facts about the end of a line that is being run.
    struct Running
    {
        AtRequest request = {};
        Ending ending = Ending::Either;
        bool cameWithLf = false;
        bool late = false;      // by a fault
        bool disturbed = false; // the client did not wait
    };

    void takePending();
    void lookBehindCr();
    void takeByte(char byte);
    void endLine();
    void endedByCrAlone();
    QByteArray fromAttention(const QByteArray& line);
    void run(const QByteArray& line);
    /// Complains about a command that has no place while a store is open. Returns false if the family refuses
    /// it then.
    bool checkPlace(const AtRequest& request, const AtCommand* command);
    void answer(const AtAnswer& answer);
    void checkEnding();
    QByteArray wireForm(const AtAnswer& answer) const;
    void echo(char byte);
    void complain(const QString& what) { m_phone.violations.record(what); }

    Phone& m_phone;
    PauseWatch m_pauses;
    TimeSource& m_time;
    Timers m_timers;
    Line m_line;

    State m_state = State::Reading;
    Running m_running;
    AtAnswer::Then m_then = AtAnswer::StayInCommandMode;
    QByteArray m_pending;    // came while a command was running
    bool m_isQueued = false; // m_pending came before the last answer
    QByteArray m_echoed;     // not yet sent
    QByteArray m_text;       // of the line that is being read
    bool m_sawCr = false;    // its CR, where a LF has to follow
    bool m_echo;
    int m_cmeLevel = 0;
};

} // namespace kalmo::handset
