#pragma once

#include <QLocalServer>

namespace kalmo::ui {

/// Kalmo runs once for each user. A second start hands its file to the one that runs, and ends.
class FileHandover : public QObject
{
    Q_OBJECT

public:
    /// `name` is the path of a socket, or of a pipe on Windows.
    explicit FileHandover(QString name = defaultName());

    /// In the folder that belongs to the user for as long as he is logged in.
    static QString defaultName();

    /// Returns true if a running Kalmo took the path, which is absolute.
    bool handOver(const QString& path) const;

    /// Takes paths from now on. Returns false if another Kalmo does already.
    bool listen();

Q_SIGNALS:
    void received(const QString& path);

private:
    void take();

    QString m_name;
    QLocalServer m_server;
};

} // namespace kalmo::ui
