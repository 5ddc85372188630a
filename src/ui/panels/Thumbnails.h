#pragma once

#include "obex/FolderListing.h"
#include "obex/PhonePath.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QThreadPool>

namespace kalmo::ui {

/// Small pictures of the files in a folder of the phone, of copies that are on this computer already. They
/// are read beside the event loop, one after the other. Nothing is fetched for them.
class Thumbnails : public QObject
{
    Q_OBJECT

public:
    explicit Thumbnails(QObject* parent);
    ~Thumbnails() override;

    /// Pixels that a picture fits in, for a screen of double density.
    static constexpr int side = 64;

    /// From now on the thumbnails of this folder are asked for.
    void show(const obex::PhonePath& folder, const QList<obex::tObxDirEntry>& entries);
    /// Takes files of this folder that have the same name and size as those of the phone.
    void lookInto(const QString& localFolder);
    /// A file that the phone holds with so many bytes came from here, or was stored here.
    void note(const obex::PhonePath& path, qint64 size, const QString& localPath);

    /// Drops all pictures: another phone may be connected.
    void forget();

    /// Empty if there is none, or none yet.
    QIcon of(const QString& name) const { return m_pictures.value(m_shown.value(name)); }

Q_SIGNALS:
    void changed(); ///< there is one more

private:
    void load(const QString& id, const QString& localPath);

    QHash<QString, QString> m_shown;  // names in the folder, with the id of each
    QHash<QString, QString> m_copies; // local paths by id
    QHash<QString, QIcon> m_pictures; // by id; empty ones are on their way or no pictures
    QHash<QString, int> m_loads;      // by id: the latest reading, whose picture alone counts
    int m_latestLoad = 0;
    QList<obex::tObxDirEntry> m_entries;
    QThreadPool m_readers;
};

} // namespace kalmo::ui
