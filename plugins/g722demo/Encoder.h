#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kalmo::g722demo {

/// Codes sound by ITU-T G.722 at 64 kbit/s. `sound` holds 16-bit little-endian samples at 16 kHz. Two samples
/// become one code, in the lower byte of a 16-bit little-endian word; a last sample without a pair is left
/// out. Returns nothing if there is no memory for the coder.
std::vector<std::uint8_t> encode(std::span<const std::uint8_t> sound);

} // namespace kalmo::g722demo
