#include "link/mdlComm.h"

#include "app/CodePage.h"
#include "app/mdlTexts.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace kalmo::link {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using toolkit::Icon;

namespace {

constexpr int mostAttempts = 3;
constexpr int purgeRounds = 10;
constexpr qsizetype tailLength = 5;
constexpr double longestNap = 0.1; // a signal that asks for a stop wakes nobody

bool isErrorTail(const QByteArray& tail)
{
    return tail == "ROR\r\n" || tail == "ORD\r\n";
}

bool isFinalTail(const QByteArray& tail)
{
    return tail == "\nOK\r\n" || tail == "\r\r\n> " || tail == "RED\r\n";
}

} // namespace

Line::Line(app::Context& context, SPortAx& port) : m_context(context), m_port(port) {}

QString Line::ComPortName(int number)
{
    const QString name = u"COM"_s + QString::number(number);
    return number < 10 ? name : u"\\\\.\\"_s + name;
}

void Line::ConfigurePort()
{
    m_port.SetInBufferSize(inBufferSize);
    m_port.SetOutBufferSize(outBufferSize);
    PurgeQueue();
    m_port.ReadText();
    m_mode = LineMode::Text;
    m_dirty = false;
    m_isUnanswered = false;
}

void Line::ClosePort()
{
    if (m_port.IsOpen())
        m_port.Close();
}

bool Line::readWaiting(QByteArray& buffer)
{
    const int waiting = std::min(m_port.InCount(), stagingSize);
    if (waiting < 1)
        return false;
    const qsizetype before = buffer.size();
    buffer.resize(before + waiting);
    const int taken = m_port.Read(buffer.data() + before, waiting);
    buffer.resize(before + std::max(taken, 0));
    return taken > 0;
}

void Line::yieldUpTo(double seconds)
{
    const QScopedValueRollback waiting(m_waiting, true);
    // Bytes that have come already need no wait.
    m_context.clock.DoEvents(m_port.InCount() > 0 ? 0 : std::clamp(seconds, 0.0, longestNap));
}

void Line::pause(double seconds)
{
    const QScopedValueRollback waiting(m_waiting, true);
    m_context.clock.WaitSeconds(seconds);
}

toolkit::Answer Line::show(const toolkit::Message& message)
{
    const QScopedValueRollback waiting(m_waiting, true);
    return m_context.dialogs.Show(message);
}

bool Line::isRefused(const QString& operation, std::initializer_list<LineMode> allowed) const
{
    const bool isItsMode = std::find(allowed.begin(), allowed.end(), m_mode) != allowed.end();
    if (!m_waiting && isItsMode)
        return false;
    const QString mode = m_mode == LineMode::Text ? u" refused, the line carries AT commands"_s
                                                  : u" refused, the line carries data"_s;
    m_context.log.WriteDebugLog(
        u"Warning:"_s, operation + (m_waiting ? u" refused, another exchange is under way"_s : mode));
    return true;
}

void Line::PurgeQueue()
{
    QByteArray discarded;
    for (int round = 0; round < purgeRounds; ++round) {
        if (m_port.InCount() < 1)
            return;
        readWaiting(discarded);
    }
    const int left = m_port.InCount();
    if (left < 1)
        return;
    m_context.log.WriteDebugLog(u"Warning:"_s,
                                u"SPortPurgeQueue_Manual - InCount="_s + QString::number(left));
    show({.text = u"SPortPurgeQueue mehrfach gescheitert. Bitte wenden Sie sich an den Programmautor."_s,
          .icon = Icon::Critical,
          .english = u"could not empty the serial line: bytes keep coming."_s});
}

void Line::Tx(QByteArray text)
{
    if (isRefused(u"Tx"_s, {LineMode::Text}))
        return;
    if (m_context.sy.blnTxLfTerminator && !text.endsWith('\n'))
        text.append('\n');
    PurgeQueue();
    if (m_context.log.isOn())
        m_context.log.WriteDebugLog(u"Tx"_s, fromCp1252(text));
    if (m_port.OutBufferSize() < text.size()) {
        m_context.log.WriteDebugLog(u"Warning:"_s,
                                    u"OutBufferOverflow Senden=%1 eComm.OutBufferSize=%2"_s.arg(text.size())
                                        .arg(m_port.OutBufferSize()));
    }
    m_port.WriteText(text);
}

bool Line::repeatAfterFailure(const QByteArray& command, int& attempts)
{
    if (++attempts >= mostAttempts || (m_repeatStop && m_repeatStop->Checked()))
        return false;
    RxError();
    Tx(command);
    m_repeats = attempts;
    return true;
}

bool Line::Rx(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail)
{
    m_repeats = 0;
    m_isUnanswered = false;
    m_failure = RxFailure::NotSent;
    m_lostAnswers = false;
    if (isRefused(u"Rx"_s, {LineMode::Text})) {
        answer.clear();
        return false;
    }
    int attempts = 0;
    QByteArray buffer;
    QByteArray tail;
    double start = m_context.clock.Timer();
    for (;;) {
        yieldUpTo(start + timeout - m_context.clock.Timer());
        readWaiting(buffer);
        if (buffer.contains("+CME ERROR:")) {
            m_failure = RxFailure::Refused;
            return false;
        }
        if (!m_port.IsOpen()) {
            m_failure = RxFailure::Gone;
            m_lostAnswers = true;
            answer.clear();
            return false;
        }
        const bool silent = m_context.clock.Timer() > start + timeout;
        if (!silent && buffer.size() >= tailLength)
            tail = buffer.last(tailLength);
        if (silent || isErrorTail(tail)) {
            m_failure = silent ? RxFailure::Silent : RxFailure::Refused;
            m_isUnanswered = silent;
            m_lostAnswers = m_lostAnswers || silent;
            if (!repeatAfterFailure(command, attempts)) {
                answer.clear();
                return false;
            }
            buffer.clear();
            tail.clear();
            start = m_context.clock.Timer();
            continue;
        }
        if (isFinalTail(tail))
            break;
    }
    m_failure = RxFailure::None;
    m_isUnanswered = false;
    m_echoed = buffer.startsWith(command);
    answer = cutAnswer(buffer, command.size(), keepTail);
    if (m_context.log.isOn())
        m_context.log.WriteDebugLog(u"Rx"_s, fromCp1252(answer));
    return true;
}

QByteArray Line::cutAnswer(const QByteArray& buffer, qsizetype commandLength, bool keepTail) const
{
    const qsizetype length = buffer.size();
    const qsizetype tailCut = keepTail ? 6 : 8; // "\r\nOK\r\n", and with it the payload's own line end
    const QByteArray head = buffer.first(std::max<qsizetype>(length - tailCut, 0));
    const qsizetype behindEcho = commandLength + 2; // of the echo and CR LF
    QByteArray payload = head.mid(std::min(behindEcho, head.size()), std::max<qsizetype>(length - 8, 0));
    // The phone echoes the added line feed too, but the command's length doesn't count it.
    if (m_context.sy.blnTxLfTerminator && payload.startsWith('\n'))
        payload.remove(0, 1);
    return payload;
}

void Line::owe(const QByteArray& command, double seconds)
{
    m_owed = command;
    m_owedPause = seconds;
}

bool Line::owes() const
{
    return !m_owed.isEmpty() && !m_waiting && m_mode == LineMode::Text && m_port.IsOpen();
}

void Line::sendOwed()
{
    if (!owes())
        return;
    Tx(m_owed);
    pause(m_owedPause);
}

bool Line::payOwed()
{
    if (!owes())
        return true;
    sendOwed();
    QByteArray answer;
    if (Rx(answer, m_owed, m_owedPause))
        m_owed.clear();
    return m_owed.isEmpty() || m_failure == RxFailure::Refused;
}

bool Line::exchange(QByteArray& answer, const QByteArray& command, double timeout, bool keepTail)
{
    if (!payOwed()) {
        answer.clear();
        return false;
    }
    Tx(command);
    const bool isTaken = Rx(answer, command, timeout, keepTail);
    if (isTaken)
        m_owed.clear(); // it was refused, and not needed
    return isTaken;
}

void Line::RxError()
{
    m_context.log.WriteDebugLog(u"RxError"_s, u"Proc ENTER"_s);
    pause(0.2);
    for (int round = 0; round < 2; ++round) {
        pause(0.15);
        Tx("ATZ\r");
        pause(0.15);
        yieldUpTo(0);
        PurgeQueue();
    }
    PurgeQueue();
    m_context.log.WriteDebugLog(u"RxError"_s, u"Proc EXIT"_s);
}

void Line::tellTransferError(const QByteArray& command)
{
    const QString name = fromCp1252(command.trimmed());
    QString reason = u"the phone did not answer"_s;
    if (!m_port.IsOpen())
        reason = u"the line to the phone is gone"_s;
    else if (m_failure == RxFailure::Refused)
        reason = u"the phone refused it"_s;
    m_context.dialogs.Show({.text = app::ResText(app::TextTransferError) + name,
                            .icon = Icon::Exclamation,
                            .english = u"could not carry out %1: %2."_s.arg(name, reason),
                            .about = toolkit::About::Request});
}

} // namespace kalmo::link
