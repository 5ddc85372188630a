#include "plugins/m9b/Melody.h"

#include <algorithm>

namespace kalmo::m9b {

namespace {

constexpr std::uint64_t longestGap = 0x0FFFFFFF; // the largest variable-length quantity of four bytes

using Bytes = std::vector<std::uint8_t>;

void appendVariable(Bytes& bytes, std::uint64_t value)
{
    for (int shift = 21; shift > 0; shift -= 7) {
        if (value >> shift != 0)
            bytes.push_back(static_cast<std::uint8_t>(0x80 | (value >> shift & 0x7F)));
    }
    bytes.push_back(static_cast<std::uint8_t>(value & 0x7F));
}

void appendBigEndian(Bytes& bytes, std::uint64_t value, int count)
{
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.push_back(static_cast<std::uint8_t>(value >> shift & 0xFF));
}

class TrackWriter
{
public:
    /// Returns false for a gap that no file can hold.
    bool add(const Event& event)
    {
        if (event.tick - m_tick > longestGap)
            return false;
        appendVariable(m_bytes, event.tick - m_tick);
        m_tick = event.tick;
        if (event.status < sysexStatus)
            addChannelMessage(event);
        else
            addOther(event);
        return true;
    }
    const Bytes& bytes() const { return m_bytes; }

private:
    void addChannelMessage(const Event& event)
    {
        const bool endsNote = (event.status & 0xF0) == 0x80;
        const auto status = static_cast<std::uint8_t>(endsNote ? 0x90 | (event.status & 0x0F) : event.status);
        if (status != m_running)
            m_bytes.push_back(status);
        m_running = status;
        m_bytes.insert(m_bytes.end(), event.data.begin(), event.data.end());
        if (endsNote)
            m_bytes.back() = 0;
    }
    void addOther(const Event& event)
    {
        m_running = 0;
        m_bytes.push_back(event.status);
        if (event.status == metaStatus)
            m_bytes.push_back(event.meta);
        appendVariable(m_bytes, event.data.size());
        m_bytes.insert(m_bytes.end(), event.data.begin(), event.data.end());
    }

    Bytes m_bytes;
    std::uint64_t m_tick = 0;
    std::uint8_t m_running = 0;
};

bool isNote(const Event& event)
{
    return (event.status & 0xF0) == 0x90 && event.data[1] > 0;
}

Bytes fileOf(std::uint16_t division, const Bytes& track)
{
    Bytes file{'M', 'T', 'h', 'd', 0, 0, 0, 6, 0, 0, 0, 1}; // format 0, one track
    appendBigEndian(file, division, 2);
    file.insert(file.end(), {'M', 'T', 'r', 'k'});
    appendBigEndian(file, track.size(), 4);
    file.insert(file.end(), track.begin(), track.end());
    return file;
}

} // namespace

Result convert(Span file)
{
    std::string error;
    const Song song = readSong(file, error);
    if (!error.empty())
        return {{}, error};
    if (std::none_of(song.events.begin(), song.events.end(), isNote))
        return {{}, "the MIDI file holds no note"};
    TrackWriter track;
    bool fits = true;
    for (const Event& event : song.events)
        fits = fits && track.add(event);
    if (!fits || !track.add({song.end, metaStatus, endOfTrackMeta, {}}))
        return {{}, "the MIDI file holds a silence that is too long"};
    Bytes melody = fileOf(song.division, track.bytes());
    if (melody.size() > largestMelody)
        return {{}, "the melody is larger than " + std::to_string(largestMelody) + " bytes"};
    return {std::move(melody), {}};
}

} // namespace kalmo::m9b
