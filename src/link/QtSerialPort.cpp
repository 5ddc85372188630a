#include "link/QtSerialPort.h"

#include <algorithm>

namespace kalmo::link {

using namespace Qt::StringLiterals;

QtSerialPort::QtSerialPort(PortTable& table) : m_table(table)
{
    connect(&m_port, &QSerialPort::errorOccurred, this, &QtSerialPort::onError);
}

bool QtSerialPort::Open(const QString& portName)
{
    m_fault = {};
    m_port.close(); // a device that went away a moment ago is still to be closed
    m_lost = false;
    const int number = portName.sliced(portName.lastIndexOf(u"COM"_s) + 3).toInt();
    const QString path = m_table.devicePath(number);
    if (path.isEmpty()) {
        m_fault = {
            u"Für COM%1 ist kein Gerät bekannt. Stecken Sie das Datenkabel ein oder wählen Sie in den "
            u"Einstellungen einen anderen Anschluss."_s.arg(number),
            u"could not open COM%1: no device has that number. Plug in the cable, or choose a port with --port."_s
                .arg(number)};
        return false;
    }
    m_port.setPortName(path);
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_fault = examinePort(path, m_port.error() == QSerialPort::PermissionError, m_port.errorString());
        return false;
    }
    if (!claimPort(m_port)) {
        m_port.close();
        m_fault = portInUse(path);
        return false;
    }
    return true;
}

void QtSerialPort::Close()
{
    m_port.close();
}

bool QtSerialPort::IsOpen() const
{
    return m_port.isOpen() && !m_lost;
}

int QtSerialPort::Read(char* buffer, int count)
{
    return IsOpen() ? static_cast<int>(m_port.read(buffer, count)) : 0;
}

int QtSerialPort::Write(const char* bytes, int count)
{
    if (!IsOpen())
        return 0;
    const qint64 taken = m_port.write(bytes, count);
    m_port.flush();
    return m_lost ? 0 : static_cast<int>(std::max<qint64>(taken, 0));
}

QByteArray QtSerialPort::ReadText()
{
    return IsOpen() ? m_port.readAll() : QByteArray();
}

void QtSerialPort::WriteText(const QByteArray& text)
{
    Write(text.constData(), static_cast<int>(text.size()));
}

int QtSerialPort::InCount() const
{
    // Bytes that the event loop has not fetched yet count too: they are older than the bytes that will be
    // sent next.
    if (IsOpen() && m_port.bytesAvailable() == 0)
        m_port.waitForReadyRead(0);
    return IsOpen() ? static_cast<int>(m_port.bytesAvailable()) : 0;
}

int QtSerialPort::InBufferSize() const
{
    return static_cast<int>(m_port.readBufferSize());
}

void QtSerialPort::SetInBufferSize(int bytes)
{
    m_port.setReadBufferSize(bytes);
}

int QtSerialPort::OutBufferSize() const
{
    return m_outBufferSize;
}

void QtSerialPort::SetOutBufferSize(int bytes)
{
    m_outBufferSize = bytes; // the send queue itself grows as needed
}

int QtSerialPort::BaudRate() const
{
    return m_port.baudRate();
}

void QtSerialPort::SetSettings(const QString& settings)
{
    m_port.setBaudRate(settings.section(u',', 0, 0).toInt());
    m_port.setParity(QSerialPort::NoParity);
    m_port.setDataBits(QSerialPort::Data8);
    m_port.setStopBits(QSerialPort::OneStop);
    m_port.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::SetControlLines(bool on)
{
    // A pseudo terminal has no control lines, which is no fault of the port.
    const QSignalBlocker blocker(m_port);
    m_port.setDataTerminalReady(on);
    m_port.setRequestToSend(on);
    m_port.clearError();
}

int QtSerialPort::CountPorts()
{
    m_numbers = m_table.numbers();
    return static_cast<int>(m_numbers.size());
}

QString QtSerialPort::PortName(int index)
{
    return index >= 0 && index < m_numbers.size() ? u"COM"_s + QString::number(m_numbers[index]) : QString();
}

void QtSerialPort::onError(QSerialPort::SerialPortError error)
{
    const bool fatal = error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
                       error == QSerialPort::WriteError;
    if (!fatal || m_lost || !m_port.isOpen())
        return;
    m_lost = true;
    // The port is closed from the event loop, since the error comes from inside of it. Left open, a device
    // that is gone would keep the loop awake.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_lost)
                m_port.close();
        },
        Qt::QueuedConnection);
}

} // namespace kalmo::link
