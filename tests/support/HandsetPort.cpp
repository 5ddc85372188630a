#include "support/HandsetPort.h"

#include "support/Verdict.h"

#include <algorithm>

namespace kalmo::tests {

using namespace Qt::StringLiterals;

namespace {
constexpr double unpluggedSeconds = 1;
}

HandsetPort::HandsetPort(VirtualClock& clock, const handset::Options& options) : m_clock(clock)
{
    QString error;
    auto phone = handset::makePhone(options, error);
    if (!phone)
        qFatal("No such handset: %ls", qUtf16Printable(error));
    m_handset = std::make_unique<handset::Handset>(std::move(phone), static_cast<handset::TimeSource&>(*this),
                                                   static_cast<handset::Wire&>(*this));
}

HandsetPort::HandsetPort(VirtualClock& clock, Verdict& verdict, const handset::Options& options)
    : HandsetPort(clock, options)
{
    m_verdict = &verdict;
}

HandsetPort::~HandsetPort()
{
    if (!m_verdict)
        return;
    for (const QString& violation : m_handset->violations())
        m_verdict->complain(u"The handset says: "_s + violation);
}

bool HandsetPort::Open(const QString&)
{
    m_open = !isUnplugged();
    return m_open;
}

void HandsetPort::Close()
{
    if (!m_open)
        return;
    m_open = false;
    m_received.clear();
    if (!m_isClosingHidden)
        m_handset->lineClosed();
}

QString HandsetPort::openError() const
{
    return isUnplugged() ? u"Port fehlt."_s : QString();
}

QString HandsetPort::openErrorEnglish() const
{
    return isUnplugged() ? u"No port."_s : QString();
}

int HandsetPort::Read(char* buffer, int count)
{
    const auto taken = static_cast<int>(std::min<qsizetype>(count, m_received.size()));
    std::copy_n(m_received.constData(), taken, buffer);
    m_received.remove(0, taken);
    return taken;
}

int HandsetPort::Write(const char* bytes, int count)
{
    if (!m_open)
        return 0;
    m_handset->receive(QByteArray(bytes, count));
    return count;
}

void HandsetPort::SetSettings(const QString& settings)
{
    m_handset->setBaudRate(settings.section(u',', 0, 0).toInt());
}

void HandsetPort::send(const QByteArray& bytes)
{
    if (m_open)
        m_received += bytes;
}

void HandsetPort::hangUp()
{
    m_open = false;
    m_received.clear();
    m_unpluggedUntil = m_clock.elapsed() + unpluggedSeconds;
}

} // namespace kalmo::tests
