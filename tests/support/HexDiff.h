#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::tests {

/// Rows of 16 bytes, as hex and as text, around the first byte in which the two differ, with a mark under it.
/// Empty if they are equal.
QString hexDiff(const QByteArray& wanted, const QByteArray& came);

} // namespace kalmo::tests
