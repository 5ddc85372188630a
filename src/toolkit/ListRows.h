#pragma once

#include <QCollator>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace kalmo::toolkit {

enum class SortBy {
    Text,
    Tag, ///< the cells' tags, or their texts where they have none
    Date ///< the date that the text begins with: day, month and a year if there is one ("24.12.2026  08:30")
};

struct ListColumn
{
    QString title;
    SortBy sortsBy = SortBy::Text;
    bool isNumber = false; ///< views align it right
};

struct ListCell
{
    QString text = {};
    QString tag = {};
};

struct ListRow
{
    QString key = {};           ///< unique within the list, or empty
    QList<ListCell> cells = {}; ///< cell 0 is the row's text, the others are its sub-items
    QString tag = {};
    QString icon = {};
    bool selected = false;
    bool hidden = false;    ///< by a search; such a row is neither selected nor current
    bool staysLast = false; ///< after the others, however they are sorted

    QString text(int column) const { return column < cells.size() ? cells[column].text : QString(); }
};

/// The rows of a list. This is the storage; the list widget is a view of it. Rows have an order, and a sort
/// changes it for good. While sorting is on, a new row goes to its sorted place, otherwise to the end.
class ListRows : public QObject
{
    Q_OBJECT

public:
    ListRows(QString name, QList<ListColumn> columns, QObject* parent = nullptr);
    ~ListRows() override;

    QString name() const { return m_name; }
    const QList<ListColumn>& columns() const { return m_columns; }

    int count() const { return static_cast<int>(m_rows.size()); }
    const ListRow& row(int index) const { return m_rows[index]->row; }
    QString text(int index, int column) const { return row(index).text(column); }

    /// Adds one row, fills it up to the list's number of columns, and returns its index.
    int add(ListRow row);
    /// Adds many rows and informs the views once.
    void addAll(std::vector<ListRow> rows);
    void removeAt(int index);
    void clear();

    void setText(int index, int column, const QString& text);
    void setKey(int index, const QString& key);

    /// Index of the row with this key, -1 if there is none. Takes constant time.
    int indexOfKey(const QString& key) const;

    /// Orders the rows by a column until setSorted(false), rows that are added later too. Texts are in German
    /// order, without regard to case.
    void sortBy(int column, Qt::SortOrder order);
    void setSorted(bool on);
    bool isSorted() const { return m_sortColumn >= 0; }
    int sortColumn() const { return m_lastSortColumn; }
    Qt::SortOrder sortOrder() const { return m_sortOrder; }

    void setSelected(int index, bool selected);
    /// For views: a search hides the row or shows it.
    void setHidden(int index, bool hidden) { m_rows[index]->row.hidden = hidden; }
    void selectAll(bool selected = true);
    QList<int> selectedRows() const;

    /// The row that the user works on, -1 if there is none. Making a row current selects it alone.
    int current() const;
    void setCurrent(int index);
    /// For views: the user moved the cursor, which does not have to select.
    void noteCurrent(int index);

Q_SIGNALS:
    void aboutToInsert(int first, int last);
    void inserted();
    void aboutToRemove(int first, int last);
    void removed();
    void aboutToReset(); ///< followed by reset(): everything may have changed, the order too
    void reset();
    void changed(int index);
    void selectionChanged();
    void currentChanged(int index);

private:
    struct Stored
    {
        ListRow row;
        mutable int index = 0; // valid while m_numbered is true
        std::optional<QCollatorSortKey> sortKey;
    };

    std::unique_ptr<Stored> makeStored(ListRow row) const;
    int placeFor(const Stored& stored) const;
    bool isBefore(const Stored& left, const Stored& right) const;
    void makeSortKey(Stored& stored) const;
    int indexOf(const Stored* stored) const;
    void renumber() const;
    void forget(const Stored* stored);

    QString m_name;
    QList<ListColumn> m_columns;
    std::vector<std::unique_ptr<Stored>> m_rows;
    QHash<QString, Stored*> m_byKey;
    Stored* m_current = nullptr;
    int m_sortColumn = -1;     // -1 while sorting is off
    int m_lastSortColumn = -1; // the column that the header shows
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    mutable bool m_numbered = true; // true while each row knows its index
};

} // namespace kalmo::toolkit
