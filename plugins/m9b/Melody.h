#pragma once

#include "plugins/m9b/Song.h"

namespace kalmo::m9b {

inline constexpr std::size_t largestMelody = 32000; ///< bytes that handsets take

/// A melody or an error; one of the two is empty.
struct Result
{
    std::vector<std::uint8_t> melody = {};
    std::string error = {};
};

/// Converts a Standard MIDI File to one of format 0 with the messages that a `Song` keeps. Saves bytes as
/// 3GPP TS 23.040, annex H, advises: a message of the same kind as the one before leaves out its status, and
/// a note ends by a note of no loudness, so that the speed of a release is lost.
Result convert(Span file);

} // namespace kalmo::m9b
