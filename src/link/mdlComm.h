#pragma once

#include "app/Context.h"
#include "link/SPortAx.h"
#include "toolkit/Progress.h"

#include <initializer_list>

namespace kalmo::link {

/// Seconds that a phone may take to answer a question about itself.
inline constexpr double queryTimeout = 1;

/// Result of RxDirect.
enum RxDirectCode { RxDirectTimeout = -1, RxDirectAnswered = 32 };

/// The meaning that the phone gives to the bytes. Only the opening and the closing of the data channel change
/// it. A newly opened port begins with text.
enum class LineMode {
    Text,      ///< AT commands: Tx and Rx
    Switching, ///< between the two: TxDirect and RxDirect
    Data,      ///< OBEX frames: TxDirect
};

/// Why the last exchange of AT commands failed.
enum class RxFailure {
    None,    ///< the exchange did not fail
    Silent,  ///< no answer, or not a whole one; the phone may have carried the command out
    Refused, ///< the phone answered with an error last
    Gone,    ///< the port went away
    NotSent, ///< another exchange or the data mode uses the line
};

/// The only owner of the serial line. AT commands go through Tx and Rx, raw bytes through TxDirect and
/// RxDirect. All of them poll the port and yield while they wait. One exchange is in progress at a time; the
/// callers block the window for that. A call from an event handler during such a yield, or in a mode that is
/// not its own, sends nothing, fails at once and is logged as a warning.
class Line
{
public:
    Line(app::Context& context, SPortAx& port);

    app::Context& context() const { return m_context; }
    SPortAx& port() const { return m_port; }

    /// "COM3", and from 10 up the device path form "\\.\COM12".
    static QString ComPortName(int number);

    LineMode mode() const { return m_mode; }
    void setMode(LineMode mode) { m_mode = mode; }

    /// Returns true during an exchange. An event handler that finds it true must not use the line.
    bool isWaiting() const { return m_waiting; }

    /// Prepares a port that was just opened: sets the size of its queues and empties them. The line is in
    /// text mode then.
    void ConfigurePort();
    void ClosePort();

    /// Discards everything received. Informs the user if bytes keep coming.
    void PurgeQueue();

    /// Sends one AT line, "AT+CGMR\r" for example, and a line feed after it if the phone wants one. Discards
    /// old bytes first, so that they can't be taken for the answer.
    void Tx(QByteArray text);

    /// Waits for the answer to `command`, which has just been sent with Tx, and gives the part between the
    /// echo and the final result. `keepTail` leaves the payload its last line end, as the list commands need
    /// it. If the answer is an error, or not whole within `timeout` seconds, the line is recovered and the
    /// command sent again, up to three times in all. Returns false after the third, at once for "+CME ERROR:"
    /// (which leaves `answer` as it was), and at once for a port that is gone. A wait that spans midnight
    /// does not time out.
    bool Rx(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail = false);

    /// Does Tx and Rx, after the command that is owed. If that gets no answer, fails and sends nothing else.
    bool exchange(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail = false);

    /// Makes the next exchange send `command` first, and pause for `seconds` before it looks for the answer:
    /// the phone may be in a state in which it takes no other command. It is settled when the phone takes it,
    /// or refuses it but takes another one. An empty command withdraws it.
    void owe(const QByteArray& command, double seconds);

    /// Returns true if a command is owed and the line is free for it.
    bool owes() const;

    /// Sends the command that is owed, if there is one, and pauses. For a line that is given up: the phone
    /// may take commands again by then. Its answer is left unread.
    void sendOwed();

    RxFailure lastFailure() const { return m_failure; }

    /// Returns true if the last request got no answer, of whichever kind it was.
    bool isSilent() const { return m_dirty || m_isUnanswered; }

    /// Returns true if any attempt of the last Rx got no answer: the phone may have carried the command out.
    bool lostAnswers() const { return m_lostAnswers; }

    /// Returns true if the last answer began with the echo of its command. An answer without it may be a late
    /// one to an earlier command.
    bool wasEchoed() const { return m_echoed; }

    /// Returns true if the last answer came at once and after the echo of its command. Any other may belong
    /// to an earlier command, or lack bytes.
    bool isAnswerSafe() const { return m_failure == RxFailure::None && m_repeats == 0 && m_echoed; }

    /// From now on Rx does not send a command again while the box is checked. A null pointer ends that.
    void stopRepeatsBy(const toolkit::CancelBox* box) { m_repeatStop = box; }

    /// Sends raw bytes, at most 10000. If the port does not take all of them, informs the user and ends the
    /// program. A port that is gone is only logged, and the wait for the answer ends at once. On a line that
    /// was marked dirty it first waits for silence and discards what came.
    void TxDirect(const QByteArray& bytes);

    /// Marks the line after an answer was given up: its bytes may still be on their way. Frames carry no
    /// number, so only the silence between them tells a late answer from the next one. A late answer that
    /// comes after that silence can't be recognised.
    void markDirty() { m_dirty = true; }

    /// Receives until the bytes hold "OK" or "ERROR" with a line end, or `timeout` seconds have passed (0
    /// means 5.5). Gives everything received, uncut, and nothing after a timeout. `label` counts down. As
    /// with Rx, a wait that spans midnight does not time out.
    RxDirectCode RxDirect(QByteArray& received, double timeout, toolkit::StatusPanel* label = nullptr);

    /// Appends the bytes that wait in the port, at most 10000, to `buffer`. Returns true if there were any.
    bool readWaiting(QByteArray& buffer);

    /// Yields once, at most for the time that a receive loop may sleep between two looks at the clock and the
    /// user.
    void yieldUpTo(double seconds);

    /// A pause that is part of an exchange.
    void pause(double seconds);

    /// Shows a box in the middle of an exchange. Event handlers must not use the line while it is open.
    toolkit::Answer show(const toolkit::Message& message);

    /// Informs the user that a command failed, by text 2002 and the command.
    void tellTransferError(const QByteArray& command);

private:
    bool isRefused(const QString& operation, std::initializer_list<LineMode> allowed) const;
    void settle();
    bool payOwed();
    bool repeatAfterFailure(const QByteArray& command, int& attempts);
    QByteArray cutAnswer(const QByteArray& buffer, qsizetype commandLength, bool keepTail) const;
    void RxError();
    void endAfterSendError(const QByteArray& bytes, int sent);

    app::Context& m_context;
    SPortAx& m_port;
    LineMode m_mode = LineMode::Text;
    bool m_waiting = false;
    bool m_dirty = false;
    bool m_isUnanswered = false; ///< the last Rx or RxDirect got no answer
    RxFailure m_failure = RxFailure::None;
    int m_repeats = 0; // of the command by the last Rx; the phone may have carried it out twice
    bool m_echoed = false;
    bool m_lostAnswers = false;
    const toolkit::CancelBox* m_repeatStop = nullptr;
    QByteArray m_owed; ///< a command, empty if none is owed
    double m_owedPause = 0;
};

/// While it lives, a command that failed is not sent again once the box is checked.
class RepeatStopScope
{
public:
    RepeatStopScope(Line& line, const toolkit::CancelBox* box) : m_line(line) { line.stopRepeatsBy(box); }
    ~RepeatStopScope() { m_line.stopRepeatsBy(nullptr); }
    Q_DISABLE_COPY_MOVE(RepeatStopScope)

private:
    Line& m_line;
};

} // namespace kalmo::link
