#pragma once

#include <QtGlobal>

namespace kalmo::app {

/// Bytes of what messages call a MB.
inline constexpr qint64 megabyte = 1024 * 1024;

} // namespace kalmo::app
