#pragma once

#include "link/mdlComm.h"
#include "toolkit/Progress.h"

#include <array>
#include <functional>
#include <optional>

namespace kalmo::phonedata {

/// The four values with which a phone rewrites every number that it sends: international prefix, country
/// code, national prefix, city code. Digits; all empty where the phone is not to rewrite.
using AreaCodes = std::array<QString, 4>;

/// The codes in an answer, without a prefix; nothing unless there are four.
std::optional<AreaCodes> parseAreaCodes(const QString& answer);

/// Whether an answer says that the phone rewrites numbers at all.
bool usesAreaCodes(const QString& answer);

/// Whether a text is nothing but digits, as each code has to be.
bool isAreaCode(const QString& text);

/// Asks the phone for its codes, as text with commas. False if they are not set up. An exchange that failed
/// is told, leaves `answer` empty and is no reason for false.
bool ReadAreaCodes(link::Line& line, toolkit::StatusPanel* panel, QString& answer);

/// Sends codes to the phone. False, told to the user, if it did not take them. With `inUse`, codes of which
/// one is empty or blank are refused before anything is sent.
bool SetAreaCodes(link::Line& line, toolkit::StatusPanel* panel, const AreaCodes& codes, bool inUse);

/// Shows the dialog for the codes, filled from an answer.
using AreaCodeDialog = std::function<void(const QString& answer)>;

} // namespace kalmo::phonedata
