#include "ui/panels/Thumbnails.h"

#include "app/SafeLocalName.h"
#include "media/PictureConversion.h"
#include "media/UploadRules.h"

#include <QDir>
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
    m_readers.waitForDone();
}

void Thumbnails::show(const obex::PhonePath& folder, const QList<obex::tObxDirEntry>& entries)
{
    m_readers.clear(); // pictures of the folder before
    m_pictures.removeIf([](const auto& picture) { return picture.value().isNull(); });
    if (m_pictures.size() > mostPictures)
        m_pictures.clear();
    m_shown.clear();
    m_entries.clear();
    for (const obex::tObxDirEntry& entry : entries) {
        if (!entry.isFile() || !isPictureFile(entry.name))
            continue;
        const QString id = idOf(folder.below(entry.name), entry.size);
        m_shown.insert(entry.name, id);
        m_entries.append(entry);
        if (m_copies.contains(id))
            load(id, m_copies.value(id));
    }
}

void Thumbnails::lookInto(const QString& localFolder)
{
    if (localFolder.isEmpty())
        return;
    for (const obex::tObxDirEntry& entry : m_entries) {
        const QString localName = app::safeLocalName(entry.name);
        const QFileInfo file(QDir(localFolder).filePath(localName));
        if (!localName.isEmpty() && file.isFile() && file.size() == entry.size)
            load(m_shown.value(entry.name), file.filePath());
    }
}

void Thumbnails::note(const obex::PhonePath& path, qint64 size, const QString& localPath)
{
    if (!isPictureFile(path.name()))
        return;
    const QString id = idOf(path, size);
    m_copies.insert(id, localPath);
    m_pictures.remove(id); // of a former file of this size
    if (m_shown.value(path.name()) == id)
        load(id, localPath);
}

void Thumbnails::forget()
{
    m_readers.clear();
    m_pictures.clear();
    m_loads.clear();
    m_copies.clear();
    m_shown.clear();
    m_entries.clear();
}

void Thumbnails::load(const QString& id, const QString& localPath)
{
    if (m_pictures.contains(id))
        return;
    m_pictures.insert(id, {});
    const int load = ++m_latestLoad;
    m_loads.insert(id, load);
    m_readers.start([this, id, load, localPath] {
        QImage image = media::loadPicture(localPath, {side, side}).image;
        if (image.isNull())
            return;
        image = image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QMetaObject::invokeMethod(
            this,
            [this, id, load, image] {
                if (m_loads.value(id) != load) // the phone was forgotten, or the file was replaced meanwhile
                    return;
                m_pictures.insert(id, QIcon(QPixmap::fromImage(image)));
                Q_EMIT changed();
            },
            Qt::QueuedConnection);
    });
}

} // namespace kalmo::ui
