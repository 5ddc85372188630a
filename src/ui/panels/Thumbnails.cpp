#include "ui/panels/Thumbnails.h"

#include "media/PictureConversion.h"
#include "media/UploadRules.h"

#include <QFileInfo>
#include <QPixmap>

namespace kalmo::ui {

namespace {

constexpr qsizetype mostPictures = 1000; // kept in memory, 16 KB each

bool isPictureFile(const QString& name)
{
    return media::isFit(name, media::UploadKind::Pictures);
}

/// A file of another size is another file.
QString idOf(const obex::PhonePath& path, qint64 size)
{
    return path.shown().toLower() + u'|' + QString::number(size);
}

} // namespace

Thumbnails::Thumbnails(QObject* parent) : QObject(parent)
{
    m_readers.setMaxThreadCount(1);
}

Thumbnails::~Thumbnails()
{
    m_readers.clear();
    m_stop.request_stop();
    m_readers.waitForDone();
}

void Thumbnails::show(const obex::PhonePath& folder, const QList<obex::tObxDirEntry>& entries)
{
    m_readers.clear(); // pictures of the folder before
    m_pictures.removeIf([](const auto& picture) { return picture.value().isNull(); });
    if (m_pictures.size() > mostPictures)
        m_pictures.clear();
    m_shown.clear();
    for (const obex::tObxDirEntry& entry : entries) {
        if (!entry.isFile() || !isPictureFile(entry.name))
            continue;
        const QString id = idOf(folder.below(entry.name), entry.size);
        m_shown.insert(entry.name, id);
        const auto copy = m_copies.find(id);
        if (copy == m_copies.end())
            continue;
        if (!copy->listed)
            copy->listed = entry.modified;
        if (*copy->listed == entry.modified) {
            load(id, *copy);
            continue;
        }
        m_copies.erase(copy); // the phone has another file now
        m_pictures.remove(id);
    }
}

void Thumbnails::note(const obex::PhonePath& path, qint64 size, const QString& localPath)
{
    if (!isPictureFile(path.name()))
        return;
    const QString id = idOf(path, size);
    const Copy copy{.path = localPath, .changed = QFileInfo(localPath).lastModified()};
    m_copies.insert(id, copy);
    m_pictures.remove(id); // of a former file of this size
    if (m_shown.value(path.name()) == id)
        load(id, copy);
}

void Thumbnails::forget()
{
    m_readers.clear();
    m_pictures.clear();
    m_loads.clear();
    m_copies.clear();
    m_shown.clear();
}

void Thumbnails::load(const QString& id, const Copy& copy)
{
    if (m_pictures.contains(id))
        return;
    m_pictures.insert(id, {});
    const int load = ++m_latestLoad;
    m_loads.insert(id, load);
    m_readers.start([this, id, load, copy, stop = m_stop.get_token()] {
        const QImage image = media::loadPicture(copy.path, {side, side}, stop).image;
        if (image.isNull() || QFileInfo(copy.path).lastModified() != copy.changed)
            return;
        const QImage small = image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QMetaObject::invokeMethod(
            this,
            [this, id, load, small] {
                if (m_loads.value(id) != load) // the phone was forgotten, or the file was replaced meanwhile
                    return;
                m_pictures.insert(id, QIcon(QPixmap::fromImage(small)));
                Q_EMIT changed();
            },
            Qt::QueuedConnection);
    });
}

} // namespace kalmo::ui
