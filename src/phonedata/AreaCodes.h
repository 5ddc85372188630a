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

/// The codes in a text without a prefix; nothing unless there are four.
std::optional<AreaCodes> parseAreaCodes(const QString& answer);

/// Returns true if a text says that the phone rewrites numbers at all.
bool usesAreaCodes(const QString& answer);

/// Returns true if a text is nothing but digits, as each code has to be.
bool isAreaCode(const QString& text);

/// Asks the phone for its codes without a message. Returns true if it answered. `answer` gets the answer as
/// it is.
bool askAreaCodes(link::Line& line, QByteArray& answer);

/// The text with commas in an answer, with or without its prefix.
QString areaCodeText(const QByteArray& answer);

/// Returns true if such a text says that the codes are set up.
bool areSetUp(const QString& text);

/// Asks the phone for its codes, as text with commas. Returns false if they are not set up. An exchange that
/// failed is reported to the user, leaves `answer` empty, and returns true.
bool ReadAreaCodes(link::Line& line, toolkit::StatusPanel* panel, QString& answer);

/// Returns true if one of the codes is empty or blank. Such codes may not be set while they are in use.
bool hasBlankCode(const AreaCodes& codes);

/// Sends codes to the phone without a message. Returns true if the phone took them.
bool sendAreaCodes(link::Line& line, const AreaCodes& codes);

/// Shows the dialog for the codes, filled from an answer.
using AreaCodeDialog = std::function<void(const QString& answer)>;

} // namespace kalmo::phonedata
