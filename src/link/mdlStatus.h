#pragma once

#include "link/mdlComm.h"

#include <QDateTime>

namespace kalmo::link {

/// Queries of the status panel. Each returns false when the phone did not answer, and has told the user then.
bool GetManufacturer(Line& line, QString& text);
bool GetSoftwareVersion(Line& line, QString& text);
bool GetSerialNumber(Line& line, QString& text);

/// The model's name, for newer models with what they call themselves in square brackets.
bool GetPhoneModelText(Line& line, QString& text);

struct SignalQuality
{
    QString text;  ///< level such as "-- 73 dBm", empty on failure
    int gauge = 0; ///< 0 to 99 for regular answers, as the phone says for others
};
SignalQuality GetSignalQuality(Line& line);

/// Charge in percent, 0 on failure.
int GetBattery(Line& line);
/// The same for those who must tell an empty battery from no answer, which is false.
bool GetBattery(Line& line, int& percent);

/// The phone's clock. Two-digit years from 30 on are of the last century.
bool GetPhoneTime(Line& line, QDateTime& dateTime);

/// Sets the phone's clock to the PC's local time and tells the user of the success.
bool SetPhoneTime(Line& line);

} // namespace kalmo::link
