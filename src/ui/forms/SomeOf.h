#pragma once

#include <QStringList>

namespace kalmo::ui {

/// The first `most` lines or names for a box, which has to fit on the screen, and the number of the others:
/// "A, B und 3 weitere" with the separator ", ".
QString someOf(const QStringList& names, qsizetype most, const QString& separator);

} // namespace kalmo::ui
