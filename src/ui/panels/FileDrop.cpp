#include "ui/panels/FileDrop.h"

#include "obex/FolderRows.h"
#include "ui/lists/RowsView.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QRubberBand>

#include <algorithm>

namespace kalmo::ui {

FileDrop::FileDrop(RowsView& view)
    : QObject(&view), m_view(view), m_mark(new QRubberBand(QRubberBand::Rectangle, view.viewport()))
{
    view.setAcceptDrops(true);
    view.viewport()->installEventFilter(this);
}

QStringList FileDrop::filesIn(const QMimeData& content)
{
    QStringList files;
    for (const QUrl& url : content.urls()) {
        if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isFile())
            files.append(url.toLocalFile());
    }
    return files;
}

/// Returns true for a drag of the list itself: those files are in the phone already.
bool FileDrop::isOwn(const QDropEvent& event) const
{
    return event.source() == &m_view || event.source() == m_view.viewport();
}

bool FileDrop::takes(const QDropEvent& event) const
{
    return !isOwn(event) && event.possibleActions().testFlag(Qt::CopyAction) &&
           !filesIn(*event.mimeData()).isEmpty();
}

int FileDrop::folderRowAt(QPoint position) const
{
    const QModelIndex index = m_view.indexAt(position);
    const bool isFolder =
        index.isValid() && m_view.rows()->row(index.row()).key.startsWith(obex::folderKeyPrefix);
    return isFolder ? index.row() : -1;
}

void FileDrop::mark(QPoint position)
{
    const int row = folderRowAt(position);
    QRect place = m_view.viewport()->rect();
    if (row >= 0) {
        const QRect cell = m_view.visualRect(m_view.model()->index(row, 0));
        place.setTop(cell.top());
        place.setBottom(cell.bottom());
    }
    m_mark->setGeometry(place);
    m_mark->show();
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event)
{
    const bool isDrop = event->type() == QEvent::Drop;
    if (isDrop || event->type() == QEvent::DragLeave)
        m_mark->hide();
    if (!isDrop && event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove)
        return QObject::eventFilter(watched, event);
    auto& drag = *static_cast<QDropEvent*>(event);
    if (!takes(drag)) {
        drag.ignore();
        const bool isFolders = std::ranges::any_of(drag.mimeData()->urls(), &QUrl::isLocalFile);
        if (event->type() == QEvent::DragEnter && isFolders && !isOwn(drag))
            Q_EMIT foldersRefused();
        return true;
    }
    drag.setDropAction(Qt::CopyAction);
    drag.accept();
    const QPoint position = drag.position().toPoint();
    if (!isDrop) {
        mark(position);
        return true;
    }
    const int row = folderRowAt(position);
    const QString key = row >= 0 ? m_view.rows()->row(row).key : QString();
    const QStringList paths = filesIn(*drag.mimeData());
    const qsizetype passedOver = drag.mimeData()->urls().size() - paths.size();
    QMetaObject::invokeMethod(
        this,
        [this, paths, key, passedOver] {
            if (m_view.isVisible())
                Q_EMIT dropped(paths, key, passedOver);
        },
        Qt::QueuedConnection);
    return true;
}

} // namespace kalmo::ui
