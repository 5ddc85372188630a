#pragma once

#include <QByteArray>
#include <QString>

namespace kalmo::media {

/// Returns true if a picture ends before its first frame does. Readers fill what is missing with one colour
/// and report success. `format` is that of QImageReader; true only for the formats "bmp", "gif" and "jpeg".
bool endsEarly(const QString& path, const QByteArray& format);

} // namespace kalmo::media
