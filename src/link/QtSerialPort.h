#pragma once

#include "link/PortAccess.h"
#include "link/PortTable.h"
#include "link/SPortAx.h"

#include <QObject>
#include <QSerialPort>

namespace kalmo::link {

/// The serial port of the programs.
class QtSerialPort final : public QObject, public SPortAx
{
    Q_OBJECT

public:
    explicit QtSerialPort(PortTable& table);

    bool Open(const QString& portName) override;
    void Close() override;
    bool IsOpen() const override;
    QString openError() const override { return m_fault.german; }
    QString openErrorEnglish() const override { return m_fault.english; }
    int Read(char* buffer, int count) override;
    int Write(const char* bytes, int count) override;
    QByteArray ReadText() override;
    void WriteText(const QByteArray& text) override;
    int InCount() const override;
    int InBufferSize() const override;
    void SetInBufferSize(int bytes) override;
    int OutBufferSize() const override;
    void SetOutBufferSize(int bytes) override;
    int BaudRate() const override;
    void SetSettings(const QString& settings) override;
    void SetControlLines(bool on) override;
    int CountPorts() override;
    QString PortName(int index) override;

private:
    void onError(QSerialPort::SerialPortError error);

    PortTable& m_table;
    mutable QSerialPort m_port; // mutable: counting the bytes fetches them
    PortFault m_fault;
    QList<int> m_numbers;
    int m_outBufferSize = outBufferSize;
    bool m_lost = false; // the device went away while it was open
};

} // namespace kalmo::link
