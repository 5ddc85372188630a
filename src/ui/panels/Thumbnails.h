#pragma once

#include "obex/FolderListing.h"
#include "obex/PhonePath.h"

#include <QDateTime>
#include <QHash>
#include <QIcon>
#include <QObject>
#include <QThreadPool>

#include <optional>
#include <stop_token>

namespace kalmo::ui {

/// Small pictures of the files in a folder of the phone, of copies that this program has saved or sent since
/// the phone was connected: a file of the same name and size from another time may show something else. They
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
    /// A file that the phone holds with so many bytes came from here, or was stored here.
    void note(const obex::PhonePath& path, qint64 size, const QString& localPath);

    /// Drops all pictures: another phone may be connected.
    void forget();

    /// Empty if there is none, or none yet.
    QIcon of(const QString& name) const { return m_pictures.value(m_shown.value(name)); }

Q_SIGNALS:
    void changed(); ///< there is one more

private:
    /// A file of this computer that the phone holds too.
    struct Copy
    {
        QString path;
        QDateTime changed;                    // when it was noted; a later change makes it another file
        std::optional<QDateTime> listed = {}; // time of the phone's file, of the next listing
    };
    void load(const QString& id, const Copy& copy);

    QHash<QString, QString> m_shown;  // names in the folder, with the id of each
    QHash<QString, Copy> m_copies;    // by id
    QHash<QString, QIcon> m_pictures; // by id; empty ones are on their way or no pictures
    QHash<QString, int> m_loads;      // by id: the latest reading, whose picture alone counts
    int m_latestLoad = 0;
    std::stop_source m_stop; // of the picture that is being read
    QThreadPool m_readers;
};

} // namespace kalmo::ui
