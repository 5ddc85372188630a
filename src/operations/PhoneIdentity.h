#pragma once

#include "link/mdlComm.h"

namespace kalmo::operations {

/// One particular handset, as far as it tells.
struct PhoneIdentity
{
    QString model;  ///< "SL450HX"
    QString serial; ///< answer to AT+CGSN, "unknown" without a usable one

    bool operator==(const PhoneIdentity&) const = default;
};

/// Serial number of a phone that gives none.
QString unknownSerial();

/// Identity of the phone that the search found. The first call after a search asks for the serial number,
/// which needs a line in text mode; later calls send nothing, unless the phone has not answered. Never fails
/// and shows no box: without two answers that agree the serial is unknown.
PhoneIdentity identifyPhone(link::Line& line);

/// The same without asking: unknown before identifyPhone().
PhoneIdentity knownIdentity(const app::Sy& sy);

} // namespace kalmo::operations
