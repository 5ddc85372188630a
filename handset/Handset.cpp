#include "handset/Handset.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

/// The bytes that a receiver at another rate reads.
QByteArray garbled(QByteArray bytes)
{
    for (char& byte : bytes)
        byte = static_cast<char>(~byte | 0x80);
    return bytes;
}

} // namespace

Handset::Handset(std::unique_ptr<Phone> phone, TimeSource& time, Wire& wire)
    : m_phone(std::move(phone)), m_wire(wire), m_rates(m_phone->rates()), m_baud(m_rates.value(0, 19200)),
      m_input(time, [this](const QByteArray& bytes) { arrive(bytes); }),
      m_output(time, [this](const QByteArray& bytes) { depart(bytes); }),
      m_at(*m_phone, time,
           {.send = [this](const QByteArray& bytes) { m_output.push(bytes); },
            .hangUp = [this] { hangUp(); },
            .enterDataMode = [this] { enterDataMode(); }}),
      m_data(*m_phone, time,
             {.send = [this](const QByteArray& bytes) { m_output.push(bytes); },
              .enterCommandMode = [this] { enterCommandMode(); }})
{
    m_output.whenDrained([this] {
        if (m_dataMode)
            m_data.outputDrained();
        else
            m_at.outputDrained();
    });
    m_output.keepPiecesWhole(m_phone->isTolerant());
    setFaults(m_phone->faults);
    setBaudRate(m_baud);
}

void Handset::setFaults(const Faults& faults)
{
    m_phone->faults = faults;
    m_output.deliverBytewise(faults.trickle);
}

void Handset::setBaudRate(int baud)
{
    m_baud = baud;
    m_input.setRate(baud);
    m_output.setRate(baud);
}

void Handset::receive(const QByteArray& bytes)
{
    m_input.push(bytes);
}

void Handset::arrive(const QByteArray& bytes)
{
    if (m_phone->faults.isSilent() || dropsLine(bytes.size()))
        return;
    const bool understands = m_phone->isTolerant() || m_rates.contains(m_baud);
    if (!understands && m_phone->options.wrongRate == WrongRate::Garbage)
        m_output.push(garbled(bytes));
    else if (understands && m_dataMode)
        m_data.receive(bytes);
    else if (understands)
        m_at.receive(bytes);
}

void Handset::depart(const QByteArray& bytes)
{
    if (!dropsLine(bytes.size()))
        m_wire.send(bytes);
}

/// Counts the bytes on the line in data mode. Returns true, and drops the line, if they are more than the
/// fault allows.
bool Handset::dropsLine(qsizetype bytes)
{
    Faults& faults = m_phone->faults;
    if (!m_dataMode || faults.hangUpAfter == 0)
        return false;
    faults.dataBytes += bytes;
    if (faults.dataBytes < faults.hangUpAfter)
        return false;
    faults.hangUpAfter = 0;
    hangUp();
    return true;
}

void Handset::enterDataMode()
{
    m_dataMode = true;
    m_data.reset();
}

void Handset::enterCommandMode()
{
    m_dataMode = false;
    m_data.reset();
    const Options& options = m_phone->options;
    if (!m_phone->isTolerant() && options.answersEscape.value_or(m_phone->family.data.answersEscape))
        m_output.push("\r\nOK\r\n");
}

void Handset::lineClosed()
{
    const ClassicStore* store = m_phone->openStore();
    if (store && !m_phone->faults.isSilent())
        m_phone->violations.record(
            u"line closed while the store \"%1\" is open"_s.arg(QString::fromLatin1(store->wireName())));
    m_phone->closeStores();
    m_input.clear();
    m_output.clear();
    m_at.reset();
    m_data.clientLeft();
}

void Handset::powerCycle()
{
    setFaults({});
    m_phone->closeStores();
    m_dataMode = false;
    m_input.clear();
    m_output.clear();
    m_at.reset();
    m_data.reset();
}

void Handset::hangUp()
{
    m_phone->closeStores();
    lineClosed();
    m_wire.hangUp();
}

} // namespace kalmo::handset
