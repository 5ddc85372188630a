#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <memory>

namespace kalmo::handset {

/// A pseudo terminal whose other end a client opens like a serial port.
class PseudoTerminal : public QObject
{
    Q_OBJECT

public:
    PseudoTerminal();
    ~PseudoTerminal() override;

    /// Makes the terminal, with a symbolic link to it unless `link` is empty. An old link of that name is
    /// replaced, anything else is not. Returns false, with the reason in `error`, if that fails. `baud` is
    /// the rate of the line until a client sets its own.
    bool open(const QString& link, int baud, QString& error);

    /// Returns true if a client can set that rate.
    static bool hasRate(int baud);

    /// Path of the client's end.
    QString path() const { return m_path; }

    /// The rate that the client has set; 0 for one that has no name.
    int baudRate() const;
    /// Bytes for the client. Discarded if there is none.
    void write(const QByteArray& bytes);
    /// Takes the terminal away from the client, as if a cable was pulled out, and makes a new one after
    /// `seconds`.
    void hangUp(double seconds);

Q_SIGNALS:
    void received(const QByteArray& bytes);
    /// The client has closed its end.
    void closed();
    /// A new terminal could not be made.
    void failed(const QString& why);

private:
    bool make(QString& error);
    bool placeLink(QString& error);
    void release();
    void remake();
    void readWaiting();
    void writeWaiting();
    void clientLeft();
    void lookForClient();
    bool hasClient() const;
    bool freeFromLastClient();

    int m_master = -1;
    QString m_path;
    QString m_link;
    int m_firstBaud = 19200;
    QByteArray m_outgoing;
    std::unique_ptr<QSocketNotifier> m_readable;
    std::unique_ptr<QSocketNotifier> m_writable;
    QTimer m_search; // for the next client, after one has left
};

} // namespace kalmo::handset
