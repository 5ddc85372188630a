#include "ui/controls/PictureLoader.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace kalmo::ui {

void PictureLoader::load(const QString& path, QSize wanted)
{
    const int order = ++m_order;
    QThreadPool::globalInstance()->start([self = QPointer(this), path, wanted, order] {
        const media::LoadedPicture picture = media::loadPicture(path, wanted);
        QMetaObject::invokeMethod(qApp, [self, picture, order] {
            if (self && self->m_order == order)
                Q_EMIT self->loaded(picture);
        });
    });
}

} // namespace kalmo::ui
