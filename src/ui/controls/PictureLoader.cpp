#include "ui/controls/PictureLoader.h"

#include "media/Beside.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace kalmo::ui {

PictureLoader::PictureLoader(QObject* parent) : QObject(parent)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(std::chrono::seconds(static_cast<int>(media::longestWork)));
    connect(&m_limit, &QTimer::timeout, this, [this] { m_stop.request_stop(); });
}

void PictureLoader::load(const QString& path, QSize wanted)
{
    drop();
    m_stop = std::stop_source();
    m_limit.start();
    QThreadPool::globalInstance()->start(
        [self = QPointer(this), path, wanted, order = m_order, stop = m_stop.get_token()] {
            media::LoadedPicture picture = media::loadPicture(path, wanted, stop);
            if (stop.stop_requested()) // an order that was dropped is not answered
                picture = {.failure = media::Failure{media::Fault::TooLong, path}};
            QMetaObject::invokeMethod(qApp, [self, picture, order] {
                if (!self || self->m_order != order)
                    return;
                self->m_limit.stop();
                Q_EMIT self->loaded(picture);
            });
        });
}

void PictureLoader::drop()
{
    ++m_order;
    m_stop.request_stop();
    m_limit.stop();
}

} // namespace kalmo::ui
