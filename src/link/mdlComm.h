#pragma once

#include "app/Context.h"
#include "link/SPortAx.h"
#include "toolkit/Progress.h"

namespace kalmo::link {

/// Result of RxDirect.
enum RxDirectCode { RxDirectTimeout = -1, RxDirectAnswered = 32 };

/// The only owner of the serial line. AT commands go through Tx and Rx, raw bytes through TxDirect and
/// RxDirect. All of them poll the port and yield while they wait; one exchange is in progress at a time, and
/// the callers see to that by blocking the window.
class Line
{
public:
    Line(app::Context& context, SPortAx& port);

    app::Context& context() const { return m_context; }
    SPortAx& port() const { return m_port; }

    /// "COM3", and from 10 up the device path form "\\.\COM12".
    static QString ComPortName(int number);

    /// Prepares a port that was just opened: its queues, and nothing left in them.
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

    /// How often the last Rx had to send its command again. A repeated command may have been carried out
    /// twice.
    int repeats() const { return m_repeats; }

    /// Sends raw bytes, at most 10000. A send that fails tells the user and ends the program.
    void TxDirect(const QByteArray& bytes);

    /// Receives until "OK" or "ERROR" with a line end is in what came, or `timeout` seconds have passed (0
    /// stands for 5.5). Gives everything received, uncut; empty after a timeout. `label` counts down.
    RxDirectCode RxDirect(QByteArray& received, double timeout, toolkit::StatusPanel* label = nullptr);

    /// Appends what waits in the port, at most 10000 bytes, to `buffer`. True if anything came.
    bool readWaiting(QByteArray& buffer);

    /// Yields once, for as long as a receive loop may sleep between two looks at the clock and the user.
    void yieldUpTo(double seconds);

    /// Tells the user that a command failed, by text 2002 and the command.
    void tellTransferError(const QByteArray& command);

private:
    bool repeatAfterFailure(const QByteArray& command, int& attempts);
    QByteArray cutAnswer(const QByteArray& buffer, qsizetype commandLength, bool keepTail) const;
    void RxError();
    void endAfterSendError(const QByteArray& bytes, int sent);

    app::Context& m_context;
    SPortAx& m_port;
    int m_repeats = 0;
};

} // namespace kalmo::link
