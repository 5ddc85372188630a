#pragma once

#include <QString>

namespace kalmo::transfer {

/// Title and look of the table, for both office targets.
struct OfficeLook
{
    QString title;          ///< "Telefonbuch"
    bool fitsWidths = true; ///< columns as wide as their longest text, or all alike
};

/// A text for XML: characters that XML forbids, such as control characters, become U+FFFD.
QString xmlText(const QString& text);

} // namespace kalmo::transfer
