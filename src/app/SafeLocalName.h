#pragma once

#include <QString>

namespace kalmo::app {

/// The part of a phone's file name that may become the name of a local file: the text after the last
/// separator of either kind. Empty if that text is empty, "." or "..", or can't be a name on every file
/// system: characters that do not print, one of <>:"|?*, a blank or dot at the end, the name of a device
/// (CON, COM1 and so on, with or without an extension), or more than 255 bytes of UTF-8.
QString safeLocalName(const QString& name);

} // namespace kalmo::app
