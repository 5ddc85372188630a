#pragma once

#include <QString>

namespace kalmo::ui {

/// Computes the memory gauge from the phone's total and free bytes. It warns before the phone's file system
/// breaks down for lack of space.
class MemoryGauge
{
public:
    /// Bytes below which memory is low, and the same in percent of the total.
    static constexpr qint64 lowBytes = 40000;
    static constexpr int lowPercent = 5;

    /// Result of an update.
    enum class Update {
        None, ///< free is above the total, so the new total has not arrived yet: nothing changes
        Shown,
        FirstWarning, ///< memory is low for the first time in this gauge's life; the user has to be warned
    };
    Update setTotal(qint64 bytes);
    Update setFree(qint64 bytes);
    /// Starts anew, but for the warning.
    void forget();

    qint64 total() const { return m_total; }
    qint64 free() const { return m_free; }

    int barMaximum() const { return m_barMaximum; }
    int barValue() const { return m_barValue; }
    QString barText() const { return m_barText; }
    bool lowMemory() const { return m_lowMemory; }

    /// One step of the warning, every two seconds. Returns false when the blinking ends.
    bool blink();
    /// Key of the picture beside the bar: "handy" or "warning".
    QString picture() const;

    /// Text for a click on the picture while memory is low.
    static QString warningText();

private:
    Update update();

    qint64 m_total = 0;
    qint64 m_free = 0;
    qint64 m_divisor = 1; // since the bar's scale ends at 16 bits
    int m_barMaximum = 1;
    int m_barValue = 0;
    QString m_barText;
    bool m_lowMemory = false;
    bool m_warned = false;
    bool m_blinkPhase = false; // number of the next picture
    bool m_showsWarning = false;
};

} // namespace kalmo::ui
