#include "plugins/m9b/Song.h"

#include <algorithm>
#include <optional>
#include <string_view>

namespace kalmo::m9b {

namespace {

constexpr int longestVariable = 4; // bytes of a variable-length quantity
constexpr std::size_t headerLength = 6;

/// Takes bytes from the front of a row of bytes; nothing once too few are left.
class Cursor
{
public:
    explicit Cursor(Span bytes) : m_left(bytes) {}

    std::size_t left() const { return m_left.size(); }
    Span rest() const { return m_left; }

    std::optional<Span> take(std::size_t count)
    {
        if (count > m_left.size())
            return {};
        const Span taken = m_left.first(count);
        m_left = m_left.subspan(count);
        return taken;
    }
    std::optional<std::uint32_t> bigEndian(std::size_t count)
    {
        const auto bytes = take(count);
        if (!bytes)
            return {};
        std::uint32_t value = 0;
        for (const std::uint8_t byte : *bytes)
            value = value << 8 | byte;
        return value;
    }
    std::optional<std::uint32_t> littleEndian()
    {
        const auto bytes = take(4);
        if (!bytes)
            return {};
        std::uint32_t value = 0;
        for (std::size_t index = 4; index-- > 0;)
            value = value << 8 | (*bytes)[index];
        return value;
    }
    std::optional<std::uint32_t> variable()
    {
        std::uint32_t value = 0;
        for (int count = 0; count < longestVariable; ++count) {
            const auto byte = bigEndian(1);
            if (!byte)
                return {};
            value = value << 7 | (*byte & 0x7F);
            if (*byte < 0x80)
                return value;
        }
        return {};
    }
    bool startsWith(std::string_view name) const
    {
        return m_left.size() >= name.size() && std::equal(name.begin(), name.end(), m_left.begin());
    }

private:
    Span m_left;
};

std::size_t dataLength(std::uint8_t status)
{
    const int kind = status & 0xF0;
    return kind == 0xC0 || kind == 0xD0 ? 1 : 2; // program change and channel pressure have one byte
}

bool isKept(std::uint8_t meta, Span data)
{
    if (meta == tempoMeta) // a tempo of zero lets no time pass
        return data.size() == 3 && std::any_of(data.begin(), data.end(), [](auto byte) { return byte != 0; });
    return (meta == timeSignatureMeta && data.size() == 4) || (meta == keySignatureMeta && data.size() == 2);
}

/// The maximum instantaneous polyphony of SP-MIDI (MMA RP-034).
bool isPolyphony(Span data)
{
    return data.size() > 4 && data[0] == 0x7F && data[2] == 0x0B && data[3] == 0x01 && data.back() == 0xF7 &&
           std::all_of(data.begin(), data.end() - 1, [](auto byte) { return byte < 0x80; });
}

class TrackReader
{
public:
    TrackReader(Span chunk, Song& song) : m_cursor(chunk), m_song(song) {}

    /// Adds the track's events to the song. Text of an error, empty for none.
    std::string read()
    {
        while (!m_ended) {
            const auto delta = m_cursor.variable();
            if (!delta)
                return m_cursor.left() == 0 ? "a track has no end" : "a time in a track is broken";
            m_tick += *delta;
            if (std::string error = readEvent(); !error.empty())
                return error;
        }
        m_song.end = std::max(m_song.end, m_tick);
        return {};
    }

private:
    std::string readEvent()
    {
        if (m_cursor.left() == 0)
            return "a track is cut off";
        const std::uint8_t first = m_cursor.rest().front();
        if (first < 0x80 && m_running == 0)
            return "a track holds data where a message has to begin";
        if (first >= 0x80)
            m_cursor.take(1);
        const std::uint8_t status = first < 0x80 ? m_running : first;
        if (status < sysexStatus)
            return readChannelMessage(status);
        m_running = 0;
        if (status == metaStatus)
            return readMeta();
        if (status == sysexStatus || status == 0xF7)
            return readSysex(status);
        return "a track holds a message that no file may hold";
    }

    std::string readChannelMessage(std::uint8_t status)
    {
        const auto data = m_cursor.take(dataLength(status));
        if (!data)
            return "a track is cut off";
        if (std::any_of(data->begin(), data->end(), [](auto byte) { return byte > 0x7F; }))
            return "a track holds a message in the middle of another";
        m_running = status;
        m_song.events.push_back({m_tick, status, 0, *data});
        return {};
    }

    std::string readMeta()
    {
        const auto kind = m_cursor.bigEndian(1);
        const auto length = m_cursor.variable();
        const auto data = kind && length ? m_cursor.take(*length) : std::nullopt;
        if (!data)
            return "a track is cut off";
        const auto meta = static_cast<std::uint8_t>(*kind);
        m_ended = meta == endOfTrackMeta;
        if (isKept(meta, *data))
            m_song.events.push_back({m_tick, metaStatus, meta, *data});
        return {};
    }

    std::string readSysex(std::uint8_t status)
    {
        const auto length = m_cursor.variable();
        const auto data = length ? m_cursor.take(*length) : std::nullopt;
        if (!data)
            return "a track is cut off";
        if (status == sysexStatus && isPolyphony(*data))
            m_song.events.push_back({m_tick, status, 0, *data});
        return {};
    }

    Cursor m_cursor;
    Song& m_song;
    std::uint64_t m_tick = 0;
    std::uint8_t m_running = 0; // status of data without a status of its own
    bool m_ended = false;
};

/// The melody within a RIFF file of kind RMID; nothing if there is none.
std::optional<Span> unwrap(Span file)
{
    Cursor cursor(file);
    cursor.take(8); // "RIFF" and its length
    if (!cursor.startsWith("RMID"))
        return {};
    cursor.take(4);
    for (;;) {
        const bool isData = cursor.startsWith("data");
        cursor.take(4);
        const auto length = cursor.littleEndian();
        const auto chunk = length ? cursor.take(*length) : std::nullopt;
        if (!chunk || isData)
            return chunk;
        cursor.take(*length % 2); // chunks start at even places
    }
}

struct Header
{
    std::uint32_t tracks = 0;
    std::uint16_t division = 0;
};

std::optional<Header> readHeader(Cursor& cursor, std::string& error)
{
    error = "this is no MIDI file";
    if (!cursor.startsWith("MThd"))
        return {};
    cursor.take(4);
    const auto length = cursor.bigEndian(4);
    const auto chunk = length && *length >= headerLength ? cursor.take(*length) : std::nullopt;
    if (!chunk)
        return {};
    Cursor fields(*chunk);
    const std::uint32_t format = *fields.bigEndian(2);
    const std::uint32_t tracks = *fields.bigEndian(2);
    const std::uint32_t division = *fields.bigEndian(2);
    if (format > 1)
        error = "only MIDI files of format 0 and 1 can be converted";
    else if (format == 0 && tracks != 1)
        error = "a MIDI file of format 0 has one track";
    else if (division == 0 || division > 0x7FFF)
        error = "the times of this MIDI file are not counted in notes";
    else
        error.clear();
    return Header{tracks, static_cast<std::uint16_t>(division)};
}

} // namespace

Song readSong(Span file, std::string& error)
{
    Song song;
    Cursor cursor(file);
    if (cursor.startsWith("RIFF"))
        cursor = Cursor(unwrap(file).value_or(Span()));
    const auto header = readHeader(cursor, error);
    if (!error.empty())
        return song;
    song.division = header->division;
    for (std::uint32_t found = 0; found < header->tracks;) {
        const bool isTrack = cursor.startsWith("MTrk");
        cursor.take(4);
        const auto length = cursor.bigEndian(4);
        const auto chunk = length ? cursor.take(*length) : std::nullopt;
        if (!chunk) {
            error = "the MIDI file is cut off";
            return song;
        }
        if (!isTrack) // other chunks may come between the tracks
            continue;
        error = TrackReader(*chunk, song).read();
        if (!error.empty())
            return song;
        ++found;
    }
    // The messages of one track follow those of another here. At the same tick those of the first track come
    // first, and a track keeps its own order: otherwise a note that ends as it begins would never stop.
    std::stable_sort(song.events.begin(), song.events.end(),
                     [](const Event& left, const Event& right) { return left.tick < right.tick; });
    return song;
}

} // namespace kalmo::m9b
