#pragma once

#include <QObject>

class QDropEvent;
class QMimeData;
class QPoint;
class QRubberBand;

namespace kalmo::ui {

class RowsView;

/// Takes files of this computer that are dropped onto a list of files, and marks where they would go.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    explicit FileDrop(RowsView& view);

    /// The local files among dragged things, without folders.
    static QStringList filesIn(const QMimeData& content);

Q_SIGNALS:
    /// After the drop has ended, since the program that the files come from waits for that, and only if the
    /// list is still on screen. `key` is that of the folder they were dropped onto, empty for the list
    /// itself. `passedOver` counts the dropped things that are no local files, such as folders.
    void dropped(const QStringList& paths, const QString& key, qsizetype passedOver);

    /// Folders alone are being dragged over the list, which does not take them.
    void foldersRefused();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takes(const QDropEvent& event) const;
    bool isOwn(const QDropEvent& event) const;
    int folderRowAt(QPoint position) const;
    void mark(QPoint position);

    RowsView& m_view;
    QRubberBand* m_mark;
};

} // namespace kalmo::ui
