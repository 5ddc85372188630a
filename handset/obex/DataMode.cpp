#include "handset/obex/DataMode.h"

#include <QtEndian>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr double guardSeconds = 1;
constexpr double pauseAfterOpening = 1;
constexpr double tolerance = 0.005; // of the clocks at both ends
const QByteArray surplus = "\x01\x02\x03";

bool isRequest(quint8 opcode)
{
    switch (opcode) {
    case obex::Connect:
    case obex::Disconnect:
    case obex::SetPath:
    case obex::Get:
    case obex::Get | obex::FinalBit:
    case obex::Put:
    case obex::Put | obex::FinalBit:
    case obex::Abort:
        return true;
    default:
        return false;
    }
}

} // namespace

DataModeLayer::DataModeLayer(Phone& phone, TimeSource& time, Line line)
    : m_phone(phone), m_timers(time), m_line(std::move(line)),
      m_escape(time, guardSeconds,
               {.pass = [this](const QByteArray& bytes) { take(bytes); },
                .escape =
                    [this] {
                        if (m_phone.faults.ignoresEscape)
                            m_orphaned = true; // the client believes that the handset is in command mode
                        else
                            m_line.enterCommandMode();
                    },
                .spoilt = [this] { complain(u"no silence after +++"_s); }}),
      m_server(phone, time)
{
}

void DataModeLayer::reset()
{
    m_timers.forgetAll();
    m_escape.reset();
    m_server.reset();
    m_state = State::Waiting;
    m_buffer.clear();
    m_leaves = false;
    m_startChecked = false;
    m_orphaned = false;
    m_isFirst = true;
    m_opened = m_timers.now();
}

void DataModeLayer::clientLeft()
{
    m_orphaned = true;
    if (m_state == State::Waiting)
        return;
    m_timers.forgetAll();
    m_state = State::Waiting;
}

void DataModeLayer::receive(const QByteArray& bytes)
{
    m_escape.receive(bytes);
}

void DataModeLayer::take(const QByteArray& bytes)
{
    m_buffer += bytes;
    takeRequests();
    if (m_state != State::Waiting && !m_buffer.isEmpty() && !std::exchange(m_disturbed, true))
        complain(u"sent before the answer to a request"_s);
}

void DataModeLayer::takeRequests()
{
    checkStart();
    const qsizetype size = declaredSize(m_buffer);
    if (m_state != State::Waiting || size == 0 || m_buffer.size() < size)
        return;
    const QByteArray request = m_buffer.first(size);
    m_buffer.remove(0, size);
    m_startChecked = false;
    run(request);
}

/// Bytes that don't begin like a request are treated as one, and the handset waits for the rest of it.
void DataModeLayer::checkStart()
{
    if (m_startChecked || m_buffer.size() < 2)
        return;
    m_startChecked = true;
    const double gap = m_timers.now() - m_opened;
    if (std::exchange(m_isFirst, false) && !m_orphaned && gap < pauseAfterOpening - tolerance)
        complain(u"a request %1 s after the data channel was opened, not %2 s"_s.arg(gap, 0, 'f', 2)
                     .arg(pauseAfterOpening));
    if (isRequest(static_cast<quint8>(m_buffer.front())) || m_orphaned)
        return;
    if (m_buffer.toUpper().startsWith("AT"))
        complain(u"AT command in data mode"_s);
    else if (m_buffer.startsWith("++"))
        complain(u"no silence before +++"_s);
    else
        complain(u"no request: "_s + QString::fromLatin1(m_buffer.first(2).toHex(' ').toUpper()));
}

void DataModeLayer::run(const QByteArray& request)
{
    m_state = State::Working;
    m_disturbed = false;
    m_orphaned = false;
    ++m_phone.faults.requests;
    if (m_phone.faults.isSilent())
        return;
    const ObexServer::Answer answer = m_server.handle(parsePacket(request));
    m_leaves = answer.disconnected && m_phone.options.profile == Profile::GeneralCprot;
    const bool late = m_phone.faults.isDueAtRequest(m_phone.faults.lateRequestAt);
    m_disturbed = late; // a client that speaks before a late answer can't know better
    const double own = m_phone.options.atOnce ? 0 : answer.seconds;
    m_timers.after(own + (late ? m_phone.faults.lateBy : 0), [this, frame = answer.frame] {
        m_state = State::Answering;
        send(frame);
    });
}

void DataModeLayer::send(QByteArray frame)
{
    const Faults& faults = m_phone.faults;
    if (faults.isDueAtRequest(faults.wrongLengthAt))
        qToBigEndian(static_cast<quint16>(frame.size() + faults.wrongLengthBy), frame.data() + 1);
    if (faults.isDueAtRequest(faults.surplusAt))
        frame += surplus;
    m_line.send(frame);
}

void DataModeLayer::outputDrained()
{
    if (m_state != State::Answering)
        return;
    m_state = State::Waiting;
    if (m_leaves)
        m_line.enterCommandMode();
    else
        takeRequests();
}

} // namespace kalmo::handset
