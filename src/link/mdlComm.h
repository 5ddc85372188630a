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

/// What the phone at the other end takes the bytes for. Only the opening and the closing of the data channel
/// change it, and a newly opened port begins with text.
enum class LineMode {
    Text,      ///< AT commands: Tx and Rx
    Switching, ///< on the way into or out of the data mode: TxDirect and RxDirect
    Data,      ///< OBEX frames: TxDirect
};

/// Why the last exchange of AT commands failed.
enum class RxFailure {
    None,    ///< it did not
    Silent,  ///< the phone did not answer, or not to the end, and may have done what it was told
    Refused, ///< the phone's last word was an error
    Gone,    ///< the port went away
    NotSent, ///< another exchange or the data mode has the line
};

/// The only owner of the serial line. AT commands go through Tx and Rx, raw bytes through TxDirect and
/// RxDirect. All of them poll the port and yield while they wait; one exchange is in progress at a time, and
/// the callers see to that by blocking the window. A call that comes all the same, from an event handler
/// during such a yield or in a mode that is not its own, sends nothing, fails at once and is logged as a
/// warning.
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

    /// True for whoever runs in an event handler in the middle of somebody else's exchange, and so has to
    /// leave the line alone.
    bool isWaiting() const { return m_waiting; }

    /// Prepares a port that was just opened: its queues, and nothing left in them. The line is in text mode
    /// then.
    void ConfigurePort();
    void ClosePort();

    /// Throws away what has been received. Tells the user if bytes keep coming.
    void PurgeQueue();

    /// Sends one AT line, "AT+CGMR\r" for example, with a line feed behind it where the phone wants one. Old
    /// bytes are thrown away first, so that they can't be taken for the answer.
    void Tx(QByteArray text);

    /// Waits for the answer to `command`, which has just been sent with Tx, and cuts out what stands between
    /// the echo and the final result. `keepTail` leaves the payload its last line end, as the list commands
    /// need it. The command is sent up to three times, with a recovery in between, when the answer is not
    /// whole within `timeout` seconds or is an error. False after the third, or at once for "+CME ERROR:",
    /// which leaves `answer` as it was, and for a port that is gone: nothing can come any more. A wait that
    /// spans midnight does not time out.
    bool Rx(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail = false);

    /// Tx and Rx in one.
    bool exchange(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail = false);

    RxFailure lastFailure() const { return m_failure; }

    /// How often the last Rx had to send its command again. A repeated command may have been carried out
    /// twice.
    int repeats() const { return m_repeats; }

    /// Whether the last answer began with the echo of its command. If not, it may be the late answer to an
    /// earlier one.
    bool wasEchoed() const { return m_echoed; }

    /// Sends raw bytes, at most 10000. A send that fails tells the user and ends the program; on a port that
    /// is gone it is logged, and whoever waits for the answer gets none at once. On a line that was marked
    /// dirty it first waits until nothing has come for a while, and throws away what did.
    void TxDirect(const QByteArray& bytes);

    /// An answer was given up, and its bytes may still be on their way. Frames carry no number, so a late
    /// answer can only be told from the next one by the silence between them: one that comes after that
    /// silence, when the next request is out, is beyond recognition.
    void markDirty() { m_dirty = true; }

    /// Receives until "OK" or "ERROR" with a line end is in what came, or `timeout` seconds have passed (0
    /// stands for 5.5). Gives everything received, uncut; empty after a timeout. `label` counts down. As with
    /// Rx, a wait that spans midnight does not time out.
    RxDirectCode RxDirect(QByteArray& received, double timeout, toolkit::StatusPanel* label = nullptr);

    /// Appends what waits in the port, at most 10000 bytes, to `buffer`. True if anything came.
    bool readWaiting(QByteArray& buffer);

    /// Yields once, for as long as a receive loop may sleep between two looks at the clock and the user.
    void yieldUpTo(double seconds);

    /// A pause that is part of an exchange.
    void pause(double seconds);

    /// Shows a box in the middle of an exchange. Whoever is called while it stands there has to leave the
    /// line alone.
    toolkit::Answer show(const toolkit::Message& message);

    /// Tells the user that a command failed, by text 2002 and the command.
    void tellTransferError(const QByteArray& command);

private:
    bool isRefused(const QString& operation, std::initializer_list<LineMode> allowed) const;
    void settle();
    bool repeatAfterFailure(const QByteArray& command, int& attempts);
    QByteArray cutAnswer(const QByteArray& buffer, qsizetype commandLength, bool keepTail) const;
    void RxError();
    void endAfterSendError(const QByteArray& bytes, int sent);

    app::Context& m_context;
    SPortAx& m_port;
    LineMode m_mode = LineMode::Text;
    bool m_waiting = false;
    bool m_dirty = false;
    RxFailure m_failure = RxFailure::None;
    int m_repeats = 0;
    bool m_echoed = false;
};

} // namespace kalmo::link
