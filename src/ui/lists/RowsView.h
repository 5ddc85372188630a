#pragma once

#include "ui/lists/RowsModel.h"

#include <QTreeView>

namespace kalmo::ui {

/// A list on screen: a view of ListRows, which keep texts, order, selection and the current row. A click on a
/// column's head sorts by it, and the next one turns the order round.
class RowsView : public QTreeView
{
    Q_OBJECT

public:
    explicit RowsView(QWidget* parent = nullptr);

    /// Shows these rows and takes their name as its own. They stay until the next rows or the view's end; as
    /// members of its parent they may go just before it.
    void setRows(toolkit::ListRows& rows);
    toolkit::ListRows* rows() const { return m_model->rows(); }

    void setIconSource(IconSource icons) { m_model->setIconSource(std::move(icons)); }
    /// What stands in the place of the rows while there are none.
    void setPlaceholder(const QString& text);
    /// Widths of the columns in average characters; those without one keep theirs.
    void setColumnCharacters(const QList<int>& characters);

Q_SIGNALS:
    /// Also for the Enter key.
    void rowDoubleClicked(int row);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void sortByHeader(int column);
    void showSelection();
    void showCurrent(int row);

    RowsModel* m_model;
    QString m_placeholder;
    bool m_syncing = false; // rows and view are being made equal
};

} // namespace kalmo::ui
