#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kalmo::m9b {

using Span = std::span<const std::uint8_t>;

inline constexpr std::uint8_t metaStatus = 0xFF;
inline constexpr std::uint8_t sysexStatus = 0xF0;
inline constexpr std::uint8_t tempoMeta = 0x51;
inline constexpr std::uint8_t timeSignatureMeta = 0x58;
inline constexpr std::uint8_t keySignatureMeta = 0x59;
inline constexpr std::uint8_t endOfTrackMeta = 0x2F;

/// One message of a song.
struct Event
{
    std::uint64_t tick = 0;  ///< since the start of the song
    std::uint8_t status = 0; ///< 80 to EF hex: a channel message; F0: system-exclusive; FF: meta
    std::uint8_t meta = 0;   ///< kind of a meta event
    Span data = {};          ///< within the file that the song was read of
};

/// The messages of a Standard MIDI File that a handset can use: channel messages, tempo, time and key
/// signature, and the SP-MIDI message that orders the voices by weight. They are in the order of playing.
struct Song
{
    std::uint16_t division = 0; ///< ticks in a quarter note
    std::vector<Event> events = {};
    std::uint64_t end = 0; ///< tick at which the last track ends
};

/// Reads a file of format 0 or 1 (Standard MIDI Files 1.0), in a RIFF wrapper or without. `error` is one
/// line, and empty for a good file. The song points into `file`.
Song readSong(Span file, std::string& error);

} // namespace kalmo::m9b
