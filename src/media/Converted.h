#pragma once

#include "media/Failure.h"

#include <QByteArray>

namespace kalmo::media {

/// Bytes of a converted file, or the failure.
struct Converted
{
    QByteArray bytes = {};
    std::optional<Failure> failure = {};
};

/// Writes the bytes to a file, which is replaced whole or not at all. Returns the failure of the conversion
/// or of the writing; nothing for success.
std::optional<Failure> saveConverted(const Converted& converted, const QString& target);

} // namespace kalmo::media
