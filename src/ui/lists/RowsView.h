#pragma once

#include "ui/lists/CopyRows.h"
#include "ui/lists/FilteredView.h"
#include "ui/lists/RowsModel.h"
#include "ui/lists/TypeAhead.h"

#include <QMimeData>

#include <functional>
#include <memory>

namespace kalmo::ui {

/// A list on screen: a view of ListRows, which keep texts, order, selection and the current row. A click on a
/// column's head sorts by it, and the next one reverses the order.
class RowsView : public FilteredView
{
    Q_OBJECT

public:
    explicit RowsView(QWidget* parent = nullptr);

    /// Shows these rows and takes their name as its own. The rows have to exist until the next rows are set.
    /// As members of the view's parent they may be destroyed just before it.
    void setRows(toolkit::ListRows& rows);
    toolkit::ListRows* rows() const { return m_model->rows(); }

    void setIconSource(IconSource icons) { m_model->setIconSource(std::move(icons)); }
    /// Gives the pictures of the rows so many pixels in height and width.
    void setPictureSize(int pixels);
    /// Text that is shown while there are no rows.
    void setPlaceholder(const QString& text);
    QString placeholder() const { return m_placeholder; }
    /// Text below the last row, and in place of the placeholder without rows. Empty for none.
    void setNote(const QString& text);
    QString note() const { return m_note; }
    /// Widths of the columns in average characters. Columns without a number keep their width.
    void setColumnCharacters(const QList<int>& characters);

    void setRowFormat(RowFormat format) { m_format = std::move(format); }
    void copySelected() const override;

    /// Gives the content of a drag of the selected rows, null if there is nothing to drag.
    using DragSource = std::function<std::unique_ptr<QMimeData>()>;
    void setDragSource(DragSource source);
    std::unique_ptr<QMimeData> dragContent() const { return m_dragSource ? m_dragSource() : nullptr; }

    /// Sorts by a column and shows that in its head.
    void sortBy(int column, Qt::SortOrder order);

    void keyboardSearch(const QString& letters) override;
    /// Returns true if the next letter goes on with a name that is being typed.
    bool isTypingName() const { return m_typeAhead.isTyping(); }

Q_SIGNALS:
    /// Also for the Enter key.
    void rowDoubleClicked(int row);
    void dragDropped(); ///< the rows of the last drag; the other program may ask for them only now

protected:
    QString ownSentence() const override;
    void keyPressEvent(QKeyEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void leaveHidden(int first, int last) override;

private:
    void sortByHeader(int column);
    void showSelection();
    void showCurrent(int row);

    RowsModel* m_model;
    QString m_placeholder;
    QString m_note;
    TypeAhead m_typeAhead;
    RowFormat m_format;
    DragSource m_dragSource;
    bool m_syncing = false; // rows and view are being made equal
};

} // namespace kalmo::ui
