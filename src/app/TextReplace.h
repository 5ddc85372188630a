#pragma once

#include <QString>

namespace kalmo::app {

/// A text with `by` in place of each `part`, in time in proportion to the text. Parts that only come about by
/// that stay.
QString replacedAll(const QString& text, QStringView part, QStringView by = {});

} // namespace kalmo::app
