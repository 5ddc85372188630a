#pragma once

#include "app/Sy.h"

#include <QString>
#include <QStringList>

namespace kalmo::app {

/// The mark of a key that is not set: reading a missing key gives it, and writing it clears a key.
QString noValue();

/// Path of the settings file under a storage root.
QString iniPath(const QString& root);

/// The settings store: one ini file, read and written at each call, so that several programs can share it.
class Settings
{
public:
    explicit Settings(const Sy& sy) : m_sy(sy) {}

    /// In all operations an empty `file` means the settings file under `Paths.Storage`. Nothing here reports
    /// an error: a missing file gives the defaults, and a failed write leaves the old file whole.

    /// The value as a number, `fallback` where it is missing or not numeric.
    float GetIniNumber(const QString& section, const QString& key, float fallback,
                       const QString& file = {}) const;
    void PutIniNumber(const QString& section, const QString& key, double value, const QString& file = {});

    /// The value, at most 255 characters of it. An empty `fallback` counts as the mark of an unset key.
    QString GetIniText(const QString& section, const QString& key, const QString& file = {},
                       const QString& fallback = {}) const;
    void PutIniText(const QString& section, const QString& key, const QString& value,
                    const QString& file = {});

    /// Keys of a section in the file's order.
    QStringList keys(const QString& section) const;

private:
    QString pathOf(const QString& file) const;

    const Sy& m_sy;
};

} // namespace kalmo::app
