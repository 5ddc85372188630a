// The line in its data mode, and on the way to it: frames out, and the answers to the switch.

#include "app/CodePage.h"
#include "app/mdlKonverter.h"
#include "app/SettingsKeys.h"
#include "link/mdlComm.h"

#include <algorithm>
#include <cmath>

namespace kalmo::link {

using namespace Qt::StringLiterals;
using app::fromCp1252;
using app::HexFromText;
using toolkit::Icon;

namespace {

constexpr double defaultDirectTimeout = 5.5;
constexpr double settledAfter = 0.3; // seconds of silence, more than a pause within one answer
constexpr double longestSettling = 3;

/// Formats without a sign, and 0 without a digit.
QString wholeSeconds(double seconds)
{
    const int rounded = static_cast<int>(std::round(std::abs(seconds)));
    return rounded == 0 ? QString() : QString::number(rounded);
}

} // namespace

void Line::settle()
{
    if (!std::exchange(m_dirty, false))
        return;
    const double start = m_context.clock.Timer();
    double lastByte = start;
    QByteArray late;
    do {
        yieldUpTo(settledAfter);
        late.clear();
        if (readWaiting(late))
            lastByte = m_context.clock.Timer();
    } while (m_context.clock.secondsSince(lastByte) < settledAfter &&
             m_context.clock.secondsSince(start) < longestSettling);
}

void Line::TxDirect(const QByteArray& bytes)
{
    if (isRefused(u"TxDirect"_s, {LineMode::Switching, LineMode::Data}))
        return;
    settle();
    PurgeQueue();
    if (m_context.log.isOn()) {
        m_context.log.WriteDebugLog(u"TxDir (ASC)"_s, fromCp1252(bytes));
        // The dump has the ASC tag too. Only the receiving side has a tag of its own for hex.
        m_context.log.WriteDebugLog(u"TxDir (ASC)"_s, HexFromText(bytes));
    }
    if (bytes.size() > stagingSize) {
        show({.text = u"Obex Sendefehler. Bitte starten Sie Ihr Telefon und Kalmo neu. Taucht das "
                      u"Problem wieder auf, wenden Sie sich bitte an den Programmautor."_s,
              .english = u"could not send a frame of %1 bytes: it is too large."_s.arg(bytes.size())});
        m_context.log.WriteDebugLog(u"Terminate"_s, u"StringToByteArray-Error:"_s + fromCp1252(bytes));
        ClosePort();
        m_context.ending.EndProgram();
    }
    if (m_port.OutBufferSize() < bytes.size()) {
        m_context.log.WriteDebugLog(
            u"Warning:"_s, u"OutBufferOverflow TxDirectLen=%1 eComm.OutBufferSize=%2"_s.arg(bytes.size())
                               .arg(m_port.OutBufferSize()));
    }
    const int sent = m_port.Write(bytes.constData(), static_cast<int>(bytes.size()));
    if (!m_port.IsOpen())
        m_context.log.WriteDebugLog(u"Warning:"_s, u"TxDirect: the port is gone"_s);
    else if (sent != bytes.size())
        endAfterSendError(bytes, sent);
}

void Line::endAfterSendError(const QByteArray& bytes, int sent)
{
    using app::keys::LastUnclosedObexDevice;
    if (!m_context.sy.usesEmulated() &&
        app::get(m_context.settings, LastUnclosedObexDevice) != app::noValue())
        app::put(m_context.settings, LastUnclosedObexDevice, app::noValue());
    show({.text = u"Obex Sendefehler (%1<>%2) Bitte starten Sie Ihr Telefon und Kalmo neu und stellen Sie "
                  u"sicher, daß der richtige COM Port gewählt ist.\r\nTaucht das Problem wieder auf, wenden "
                  u"Sie sich bitte an den Programmautor."_s.arg(sent)
                      .arg(bytes.size()),
          .icon = Icon::Exclamation,
          .english = u"could not send: the line took %1 of %2 bytes. Switch the handset off and on before "
                     u"the next try, or run \"kalmoctl recover\" when the line is back."_s.arg(sent)
                         .arg(bytes.size())});
    m_context.log.WriteDebugLog(u"Terminate"_s, u"eComm TxLen: %1 Done:%2"_s.arg(bytes.size()).arg(sent));
    ClosePort();
    m_context.ending.EndProgram();
}

RxDirectCode Line::RxDirect(QByteArray& received, double timeout, toolkit::StatusPanel* label)
{
    received.clear();
    if (isRefused(u"RxDirect"_s, {LineMode::Switching}))
        return RxDirectTimeout;
    if (timeout == 0)
        timeout = defaultDirectTimeout;
    const double start = m_context.clock.Timer();
    QByteArray buffer;
    do {
        const double elapsed = m_context.clock.Timer() - start;
        if (label) {
            const QString caption = label->Text();
            const qsizetype dots = caption.indexOf(u"..."_s);
            label->SetText(caption.left(std::max<qsizetype>(dots, 0)) + u"... "_s +
                           wholeSeconds(elapsed - timeout) + u" Sekunden max. Restzeit"_s);
        }
        yieldUpTo(timeout - elapsed);
        readWaiting(buffer);
        if (m_context.clock.Timer() > start + timeout || !m_port.IsOpen()) {
            const QString prefix = u"RxDir Timeout (%1) - Exit RX - Buffer: "_s.arg(timeout);
            m_context.log.WriteDebugLog(u"RxDir (ASC)"_s, prefix + fromCp1252(buffer));
            m_context.log.WriteDebugLog(u"RxDir (HEX)"_s, prefix + HexFromText(buffer));
            m_isUnanswered = true;
            return RxDirectTimeout;
        }
    } while (!buffer.contains("ERROR\r\n") && !buffer.contains("OK\r\n"));
    received = buffer;
    m_isUnanswered = false;
    m_context.log.WriteDebugLog(u"RxDir (ASC)"_s, u"OK: "_s + fromCp1252(received));
    m_context.log.WriteDebugLog(u"RxDir (HEX)"_s, u"OK: "_s + HexFromText(received));
    return RxDirectAnswered;
}

} // namespace kalmo::link
