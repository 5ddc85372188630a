#include "ui/FileHandover.h"

#include <QLocalSocket>
#include <QStandardPaths>

namespace kalmo::ui {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestWait = 2000; // milliseconds

} // namespace

FileHandover::FileHandover(QString name) : m_name(std::move(name))
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &FileHandover::take);
}

QString FileHandover::defaultName()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/kalmo-open"_s;
}

bool FileHandover::handOver(const QString& path) const
{
    QLocalSocket socket;
    socket.connectToServer(m_name, QIODevice::WriteOnly);
    if (!socket.waitForConnected(longestWait))
        return false;
    socket.write(path.toUtf8());
    return socket.waitForBytesWritten(longestWait);
}

bool FileHandover::listen()
{
    QLocalSocket other; // the server would take the name from the one that has it
    other.connectToServer(m_name);
    if (other.waitForConnected(longestWait))
        return false;
    QLocalServer::removeServer(m_name); // left by a program that was killed
    return m_server.listen(m_name);
}

void FileHandover::take()
{
    QLocalSocket* socket = m_server.nextPendingConnection();
    const auto read = [this, socket] {
        if (const QByteArray path = socket->readAll(); !path.isEmpty())
            Q_EMIT received(QString::fromUtf8(path));
        socket->deleteLater();
    };
    if (socket->state() == QLocalSocket::UnconnectedState) // it has sent and gone
        read();
    else
        connect(socket, &QLocalSocket::disconnected, this, read);
}

} // namespace kalmo::ui
