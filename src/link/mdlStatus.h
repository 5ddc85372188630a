#pragma once

#include "link/mdlComm.h"

#include <QDateTime>

namespace kalmo::link {

/// Queries of the status panel. Each returns false if the phone did not answer, after it has informed the
/// user.
bool GetManufacturer(Line& line, QString& text);
bool GetSoftwareVersion(Line& line, QString& text);
bool GetSerialNumber(Line& line, QString& text);

/// The model's name. For newer models the answer to "AT^WPPN" follows in square brackets.
bool GetPhoneModelText(Line& line, QString& text);

struct SignalQuality
{
    QString text;  ///< level such as "-- 73 dBm", empty on failure
    int gauge = 0; ///< 0 to 99 for regular answers; other answers are not limited

    bool operator==(const SignalQuality&) const = default;
};
SignalQuality GetSignalQuality(Line& line);

/// Charge in percent, 0 on failure. Part of the described interface.
int GetBattery(Line& line);
/// Does the same, but returns false if there is no answer, so that 0 means an empty battery.
bool GetBattery(Line& line, int& percent);

/// Reads the phone's clock. Two-digit years from 30 on are of the last century.
bool GetPhoneTime(Line& line, QDateTime& dateTime);

/// Sets the phone's clock to the PC's local time and informs the user of the success.
bool SetPhoneTime(Line& line);

} // namespace kalmo::link
