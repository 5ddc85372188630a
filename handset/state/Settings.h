#pragma once

#include <QJsonObject>
#include <QStringList>

#include <array>
#include <vector>

namespace kalmo::handset {

/// Events that a ringtone is chosen for, in the order of Settings::ringtones.
enum RingtoneEvent { ExternalCall, InternalCall, Appointment, AlarmClock, ringtoneEvents };

struct Ringtone
{
    int sound = 1;
    int volume = 3; ///< 1 to 5, 6 is rising
};

/// One of the handset's own melodies.
struct Melody
{
    QString name;
    QString kind; ///< "MID" for example
    int size = 0; ///< bytes
    int id = 0;   ///< from 11 on; 1 to 10 are the melodies of every handset
};

/// The handset's memory besides its lists.
struct Settings
{
    QString serialNumber = QStringLiteral("004999010640000");
    int signal = 20;       ///< in the units of "AT+CSQ", 0 to 31
    int battery = 85;      ///< percent
    qint64 clockAhead = 0; ///< seconds by which the handset's clock is ahead
    QStringList areaCodes = {QStringLiteral("00"), QStringLiteral("49"), QStringLiteral("0"), {}};
    std::array<Ringtone, ringtoneEvents> ringtones = {};
    std::vector<Melody> melodies = {};

    QJsonObject json() const;
    void load(const QJsonObject& json);
};

} // namespace kalmo::handset
