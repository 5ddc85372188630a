#pragma once

#include "media/PictureConversion.h"

#include <QObject>

namespace kalmo::ui {

/// Reads pictures beside the event loop. Of several orders only the last is answered.
class PictureLoader : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Reads a picture that is to become `wanted` pixels.
    void load(const QString& path, QSize wanted);
    /// Forgets what is being read.
    void drop() { ++m_order; }

Q_SIGNALS:
    void loaded(const kalmo::media::LoadedPicture& picture);

private:
    int m_order = 0;
};

} // namespace kalmo::ui
