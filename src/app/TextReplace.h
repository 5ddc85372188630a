#pragma once

#include <QString>

namespace kalmo::app {

/// Replaces each `part` of a text by `by`, in linear time. Parts that only the replacement creates stay.
QString replacedAll(const QString& text, QStringView part, QStringView by = {});

} // namespace kalmo::app
