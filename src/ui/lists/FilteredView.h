#pragma once

#include "toolkit/RowFilter.h"

#include <QTreeView>

#include <functional>

namespace kalmo::ui {

/// A list on screen that can be searched, for models without children. A hidden row is neither selected nor
/// current, so that no command acts on rows that the user does not see.
class FilteredView : public QTreeView
{
    Q_OBJECT

public:
    explicit FilteredView(QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;

    /// Shows only the rows that match.
    void setFilter(const QString& typed);
    bool isFiltered() const { return !m_filter.isEmpty(); }
    int shownRows() const;
    /// Text that is shown now, in the place of the rows or below them; empty for none. Screen readers read it
    /// as the description of the list.
    QString sentence() const;

    /// Takes the focus. If no row is selected it selects the current one, or else the first that is shown.
    void enter();

    /// Puts the selected rows into the clipboard.
    virtual void copySelected() const;

    /// For the program's command "Suchen".
    void wantSearch() { Q_EMIT searchWanted(); }

Q_SIGNALS:
    void searchWanted();
    void filtered(); ///< other rows are shown than before

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    /// The sentence where the search does not hide all rows. The list calls showSentence() when it changes.
    virtual QString ownSentence() const { return {}; }
    void showSentence();
    /// Moves the cursor from a row that goes to the next that is shown, or else to the last before it. The
    /// selection model would take the row above, hidden or not.
    void rowsAboutToBeRemoved(const QModelIndex& parent, int first, int last) override;
    int lastRow() const { return model() ? model()->rowCount() - 1 : -1; }
    /// These rows as ranges: a selection of thousands of single rows would take seconds.
    QItemSelection rangesOf(const std::function<bool(int row)>& isIn) const;
    /// The search has been applied to these rows: ends the selection of those that are hidden now.
    virtual void leaveHidden(int first, int last);

private:
    void applyFilter(int first, int last);
    int firstShown(int from = 0) const;
    int lastShown(int from) const;
    int bottomOfRows() const;
    QStringList textsOf(int row) const;

    toolkit::RowFilter m_filter;
};

} // namespace kalmo::ui
