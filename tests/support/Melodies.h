#pragma once

#include <QByteArray>
#include <QList>

namespace kalmo::tests {

inline QByteArray bigEndian(quint32 value, int count)
{
    QByteArray bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes.append(static_cast<char>(value >> shift & 0xFF));
    return bytes;
}

inline QByteArray chunk(const QByteArray& name, const QByteArray& content)
{
    return name + bigEndian(static_cast<quint32>(content.size()), 4) + content;
}

/// A Standard MIDI File of tracks in hex.
inline QByteArray midiFile(quint32 format, const QList<QByteArray>& tracks, quint32 division = 96)
{
    QByteArray file = chunk("MThd", bigEndian(format, 2) + bigEndian(static_cast<quint32>(tracks.size()), 2) +
                                        bigEndian(division, 2));
    for (const QByteArray& track : tracks)
        file += chunk("MTrk", QByteArray::fromHex(track));
    return file;
}

/// A scale of so many notes, as bytes of one track.
inline QByteArray scale(int notes)
{
    QByteArray track = "00 C0 05 ";
    for (int note = 0; note < notes; ++note) {
        const QByteArray key = QByteArray::number(48 + note % 36, 16);
        track += "00 90 " + key + " 64 30 80 " + key + " 40 ";
    }
    return track + "00 FF 2F 00";
}

} // namespace kalmo::tests
