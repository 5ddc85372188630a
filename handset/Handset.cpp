#include "handset/Handset.h"

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

/// What a receiver at another rate makes of bytes.
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
      m_output(time, [this](const QByteArray& bytes) { m_wire.send(bytes); }),
      m_at(*m_phone, time,
           {.send = [this](const QByteArray& bytes) { m_output.push(bytes); },
            .hangUp = [this] { hangUp(); },
            .enterDataMode = [] {}})
{
    m_output.whenDrained([this] { m_at.outputDrained(); });
    setBaudRate(m_baud);
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
    if (m_phone->faults.isSilent())
        return;
    if (m_rates.contains(m_baud))
        m_at.receive(bytes);
    else if (m_phone->options.wrongRate == WrongRate::Garbage)
        m_output.push(garbled(bytes));
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
}

void Handset::hangUp()
{
    m_phone->closeStores();
    lineClosed();
    m_wire.hangUp();
}

} // namespace kalmo::handset
