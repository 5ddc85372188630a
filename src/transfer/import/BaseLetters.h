#pragma once

#include <QString>

namespace kalmo::transfer {

/// The text with each character that a handset's name field lacks replaced by its base letters, where it has
/// some: "Garcia" for "García", "Lukasz" for "Łukasz". All others stay.
QString withBaseLetters(QStringView text);

} // namespace kalmo::transfer
