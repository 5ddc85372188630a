#pragma once

#include "toolkit/Clock.h"

#include <QString>

#include <optional>

namespace kalmo::toolkit {

/// State of several transfers as one.
struct BatchReading
{
    qsizetype index = 0; ///< of the file whose turn it is, from 1; 0 before the first one
    qsizetype count = 0; ///< of the files
    qint64 done = 0;     ///< bytes of all files that are through or have been sent of this one
    qint64 total = 0;    ///< bytes of all files, 0 if not known
    double part = 0;     ///< of the whole, 0 to 1; by bytes or, where those are not known, by files
    double seconds = 0;  ///< since the beginning
    std::optional<double> rate = {};        ///< bytes in a second, once it says something
    std::optional<double> secondsLeft = {}; ///< where rate and total are known
};

/// Measures several transfers as one: which file it is, how far the whole is, at which rate, and how long it
/// will take. A file counts as done as soon as the next one begins, even if it failed; its missing bytes do
/// not count for the rate.
class BatchMeter
{
public:
    /// `clock` has to outlive the meter.
    explicit BatchMeter(const Clock& clock) : m_clock(&clock), m_start(clock.Timer()) {}

    /// Begins a batch of so many files with so many bytes together, 0 if they are not known.
    void expect(qsizetype count, qint64 total);
    /// Begins a file of so many bytes.
    void next(qint64 size);
    /// Reports the bytes of the file that have been transferred. Returns true if that moves the file on: a
    /// file never falls back, so that a look at a folder in between does no harm.
    bool setBytes(qint64 bytes);
    /// Does the same as a part of the file.
    bool setShare(int value, int maximum);

    BatchReading reading() const;

private:
    const Clock* m_clock;
    double m_start;
    qsizetype m_count = 0;
    qsizetype m_index = 0;
    qint64 m_total = 0;
    qint64 m_size = 0;
    qint64 m_passed = 0;      // bytes of the files before
    qint64 m_bytes = 0;       // of this one
    qint64 m_transferred = 0; // of the files before, as far as they were transferred
    double m_share = 0;       // of this file
};

/// "0:07", "12:34", "1:02:03".
QString timeText(double seconds);

} // namespace kalmo::toolkit
