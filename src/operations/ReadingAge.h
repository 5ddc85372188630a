#pragma once

#include <QDateTime>

namespace kalmo::operations {

/// Seconds for which a reading of the phone holds while the user looks at it or thinks about a question.
/// Meanwhile somebody may call, press the handset's own keys, or put another handset on the cable.
inline constexpr qint64 readingHolds = 120;

/// Returns true if a reading made at `readAt` is young enough. If the clock was set back since, its age is
/// not known, and it no longer holds.
inline bool isYoung(const QDateTime& readAt, const QDateTime& now)
{
    const qint64 age = readAt.secsTo(now);
    return age >= 0 && age <= readingHolds;
}

} // namespace kalmo::operations
