#pragma once

#include <QStringList>

namespace kalmo::cli {

/// The candidate that a mistyped word most likely meant, empty if none is near. Two swapped letters count as
/// one slip.
QString closestTo(const QString& word, const QStringList& candidates);

} // namespace kalmo::cli
