#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::link {

inline constexpr int inBufferSize = 16600; ///< bytes of the receive queue
inline constexpr int outBufferSize = 4096; ///< bytes of the send queue
inline constexpr int stagingSize = 10000;  ///< most bytes of one read or one raw send

/// The serial port. Reads never block; what arrives waits in a queue.
class SPortAx
{
public:
    virtual ~SPortAx() = default;

    /// Opens the device of a port name such as "COM3" or "\\.\COM12". Returns false if it is missing, busy or
    /// not permitted; openError() then gives the reason.
    virtual bool Open(const QString& portName) = 0;
    virtual void Close() = 0;
    virtual bool IsOpen() const = 0;
    /// Reason why the last Open() failed, for the user. Empty if it did not.
    virtual QString openError() const = 0;
    virtual QString openErrorEnglish() const = 0;

    /// Copies up to `count` waiting bytes and returns how many.
    virtual int Read(char* buffer, int count) = 0;
    /// Sends raw bytes and returns how many were taken. Fewer than `count` means that the line is gone.
    virtual int Write(const char* bytes, int count) = 0;
    /// Returns everything that waits in the receive queue, and empties it.
    virtual QByteArray ReadText() = 0;
    virtual void WriteText(const QByteArray& text) = 0;

    /// Bytes that wait in the receive queue.
    virtual int InCount() const = 0;
    virtual int InBufferSize() const = 0;
    virtual void SetInBufferSize(int bytes) = 0;
    virtual int OutBufferSize() const = 0;
    virtual void SetOutBufferSize(int bytes) = 0;

    /// Baud rate in force.
    virtual int BaudRate() const = 0;
    /// Line settings in the form "19200,N,8,1".
    virtual void SetSettings(const QString& settings) = 0;
    /// Raises the control lines DTR and RTS, which power some data cables.
    virtual void SetControlLines(bool on) = 0;

    /// Number of serial ports of the machine, -1 if they can't be listed.
    virtual int CountPorts() = 0;
    /// Name such as "COM3" of the port with that index, counted from 0.
    virtual QString PortName(int index) = 0;
};

} // namespace kalmo::link
