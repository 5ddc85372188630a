#pragma once

#include "handset/at/AtLayer.h"
#include "handset/obex/DataMode.h"
#include "handset/Pacer.h"

namespace kalmo::handset {

/// A handset at one end of a serial line. It has no thread and does not wait: it acts when bytes come in and
/// when the time source calls back.
class Handset
{
public:
    Handset(std::unique_ptr<Phone> phone, TimeSource& time, Wire& wire);
    Q_DISABLE_COPY_MOVE(Handset)

    /// Bytes from the client, as it hands them to its port. They then need their time on the line.
    void receive(const QByteArray& bytes);
    /// The client's rate, in baud. The default is the handset's own.
    void setBaudRate(int baud);
    /// The client has closed its port, or is gone.
    void lineClosed();

    /// Switches the handset off and on again, which ends all faults and the data mode.
    void powerCycle();

    /// Counts from 1 again.
    void setFaults(const Faults& faults);

    const QStringList& violations() const { return m_phone->violations.all(); }
    const Phone& phone() const { return *m_phone; }
    int baudRate() const { return m_baud; }
    bool isInDataMode() const { return m_dataMode; }

private:
    void arrive(const QByteArray& bytes);
    void depart(const QByteArray& bytes);
    bool dropsLine(qsizetype bytes);
    void enterDataMode();
    void enterCommandMode();
    void hangUp();

    std::unique_ptr<Phone> m_phone;
    Wire& m_wire;
    QList<int> m_rates; // at which it answers
    int m_baud;
    Pacer m_input;
    Pacer m_output;
    AtLayer m_at;
    DataModeLayer m_data;
    bool m_dataMode = false;
};

} // namespace kalmo::handset
