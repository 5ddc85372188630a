#pragma once

#include <QByteArray>

#include <spandsp.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace kalmo::tests {

inline constexpr int soundRate = 16000; // samples a second in a handset

/// Samples of a sine at so many hertz; `level` in dB below full scale.
inline std::vector<qint16> tone(double hertz, double level, int count)
{
    std::vector<qint16> samples;
    for (int index = 0; index < count; ++index) {
        const double phase = 2 * std::numbers::pi * hertz * index / soundRate;
        samples.push_back(
            static_cast<qint16>(std::lround(32767 * std::pow(10, level / 20) * std::sin(phase))));
    }
    return samples;
}

inline QByteArray bytesOf(const std::vector<qint16>& samples)
{
    return {reinterpret_cast<const char*>(samples.data()), static_cast<qsizetype>(2 * samples.size())};
}

inline QByteArray little(quint32 value, int count)
{
    QByteArray bytes;
    for (int index = 0; index < count; ++index, value >>= 8)
        bytes.append(static_cast<char>(value & 0xFF));
    return bytes;
}

/// A WAV file of 16-bit samples of one channel.
inline QByteArray wav(const std::vector<qint16>& samples, quint32 rate = soundRate)
{
    const QByteArray data = bytesOf(samples);
    const auto size = static_cast<quint32>(data.size());
    return "RIFF" + little(36 + size, 4) + "WAVEfmt " + little(16, 4) + little(1, 2) + little(1, 2) +
           little(rate, 4) + little(2 * rate, 4) + little(2, 2) + little(16, 2) + "data" + little(size, 4) +
           data;
}

/// The samples that a handset makes of a stream of codes.
inline std::vector<qint16> decoded(const QByteArray& codes)
{
    std::vector<qint16> samples(static_cast<size_t>(2 * codes.size()));
    g722_decode_state_t* state = g722_decode_init(nullptr, 64000, 0);
    g722_decode(state, samples.data(), reinterpret_cast<const quint8*>(codes.constData()),
                static_cast<int>(codes.size()));
    g722_decode_free(state);
    return samples;
}

/// How far a tone of so many hertz is above all else, in dB.
inline double clearness(const std::vector<qint16>& samples, double hertz)
{
    double sine = 0;
    double cosine = 0;
    double power = 0;
    const auto count = static_cast<double>(samples.size());
    for (size_t index = 0; index < samples.size(); ++index) {
        const double phase = 2 * std::numbers::pi * hertz * static_cast<double>(index) / soundRate;
        sine += samples[index] * std::sin(phase);
        cosine += samples[index] * std::cos(phase);
        power += static_cast<double>(samples[index]) * samples[index];
    }
    const double wanted = 2 * (sine * sine + cosine * cosine) / count / count;
    return 10 * std::log10(wanted / (power / count - wanted));
}

} // namespace kalmo::tests
