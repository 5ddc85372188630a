#pragma once

#include "media/PictureConversion.h"

#include <QObject>
#include <QTimer>

namespace kalmo::ui {

/// Reads pictures in another thread. Of several orders only the last is answered; the others are stopped.
class PictureLoader : public QObject
{
    Q_OBJECT

public:
    explicit PictureLoader(QObject* parent = nullptr);
    ~PictureLoader() override { drop(); }

    /// Reads a picture for a result of `wanted` pixels. Fails after `media::longestWork`.
    void load(const QString& path, QSize wanted);
    /// Stops the reading.
    void drop();

Q_SIGNALS:
    void loaded(const kalmo::media::LoadedPicture& picture);

private:
    int m_order = 0;
    std::stop_source m_stop;
    QTimer m_limit;
};

} // namespace kalmo::ui
