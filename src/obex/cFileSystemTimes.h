#pragma once

#include <QDateTime>
#include <QString>

namespace kalmo::obex {

/// The times of one local file.
class cFileSystemTimes
{
public:
    explicit cFileSystemTimes(QString file) : m_file(std::move(file)) {}

    /// Sets the time of creation, given as local time. Returns false if the system has one and it could not
    /// be set.
    bool SetDateCreated(const QDateTime& moment) const;

private:
    QString m_file;
};

} // namespace kalmo::obex
