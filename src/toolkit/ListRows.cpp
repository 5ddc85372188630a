#include "toolkit/ListRows.h"

#include <algorithm>

namespace kalmo::toolkit {

namespace {

const QCollator& germanOrder()
{
    static const QCollator collator = [] {
        QCollator made(QLocale(QLocale::German, QLocale::Germany));
        made.setCaseSensitivity(Qt::CaseInsensitive);
        return made;
    }();
    return collator;
}

/// Year, month, day and the rest, so that the text's order is the order of time.
QString dateKey(const QString& text)
{
    const bool hasYear = text.size() > 5 && text[5] == u'.';
    return hasYear ? text.mid(6, 4) + text.mid(3, 2) + text.left(2) + text.mid(10)
                   : text.mid(3, 2) + text.left(2) + text.mid(5);
}

QString sortText(const ListCell& cell, SortBy sortsBy)
{
    if (sortsBy == SortBy::Date)
        return dateKey(cell.text);
    return sortsBy == SortBy::Tag && !cell.tag.isEmpty() ? cell.tag : cell.text;
}

} // namespace

ListRows::ListRows(QString name, QList<ListColumn> columns, QObject* parent)
    : QObject(parent), m_name(std::move(name)), m_columns(std::move(columns))
{
}

ListRows::~ListRows() = default;

std::unique_ptr<ListRows::Stored> ListRows::makeStored(ListRow row) const
{
    auto stored = std::make_unique<Stored>();
    stored->row = std::move(row);
    stored->row.cells.resize(m_columns.size());
    if (isSorted())
        makeSortKey(*stored);
    return stored;
}

int ListRows::add(ListRow row)
{
    auto stored = makeStored(std::move(row));
    const int index = isSorted() ? placeFor(*stored) : count();
    Q_EMIT aboutToInsert(index, index);
    if (!stored->row.key.isEmpty())
        m_byKey.insert(stored->row.key, stored.get());
    stored->index = index;
    m_numbered = m_numbered && index == count();
    m_rows.insert(m_rows.begin() + index, std::move(stored));
    Q_EMIT inserted();
    return index;
}

void ListRows::addAll(std::vector<ListRow> rows)
{
    if (rows.empty())
        return;
    const int first = count();
    Q_EMIT aboutToInsert(first, first + static_cast<int>(rows.size()) - 1);
    m_rows.reserve(m_rows.size() + rows.size());
    for (ListRow& row : rows) {
        auto stored = makeStored(std::move(row));
        if (!stored->row.key.isEmpty())
            m_byKey.insert(stored->row.key, stored.get());
        m_rows.push_back(std::move(stored));
    }
    m_numbered = false;
    Q_EMIT inserted();
    if (isSorted())
        sortBy(m_sortColumn, m_sortOrder);
}

void ListRows::removeAt(int index)
{
    Q_ASSERT(index >= 0 && index < count());
    Q_EMIT aboutToRemove(index, index);
    forget(m_rows[index].get());
    m_numbered = m_numbered && index == count() - 1;
    m_rows.erase(m_rows.begin() + index);
    Q_EMIT removed();
}

void ListRows::clear()
{
    Q_EMIT aboutToReset();
    m_rows.clear();
    m_byKey.clear();
    m_current = nullptr;
    m_numbered = true;
    Q_EMIT reset();
}

void ListRows::setText(int index, int column, const QString& text)
{
    Stored& stored = *m_rows[index];
    stored.row.cells[column].text = text;
    if (column == m_sortColumn)
        makeSortKey(stored);
    Q_EMIT changed(index);
}

void ListRows::setKey(int index, const QString& key)
{
    Stored& stored = *m_rows[index];
    if (m_byKey.value(stored.row.key) == &stored)
        m_byKey.remove(stored.row.key);
    stored.row.key = key;
    if (!key.isEmpty())
        m_byKey.insert(key, &stored);
}

int ListRows::indexOfKey(const QString& key) const
{
    return indexOf(m_byKey.value(key));
}

void ListRows::sortBy(int column, Qt::SortOrder order)
{
    Q_ASSERT(column >= 0 && column < m_columns.size());
    Q_EMIT aboutToReset();
    m_sortColumn = m_lastSortColumn = column;
    m_sortOrder = order;
    for (auto& stored : m_rows)
        makeSortKey(*stored);
    std::stable_sort(m_rows.begin(), m_rows.end(),
                     [this](const auto& left, const auto& right) { return isBefore(*left, *right); });
    m_numbered = false;
    Q_EMIT reset();
}

void ListRows::setSorted(bool on)
{
    if (!on)
        m_sortColumn = -1;
    else if (!isSorted())
        sortBy(std::max(m_lastSortColumn, 0), m_sortOrder);
}

void ListRows::setSelected(int index, bool selected)
{
    ListRow& row = m_rows[index]->row;
    if (row.selected == selected)
        return;
    row.selected = selected;
    Q_EMIT selectionChanged();
}

void ListRows::selectAll(bool selected)
{
    for (auto& stored : m_rows)
        stored->row.selected = selected;
    Q_EMIT selectionChanged();
}

QList<int> ListRows::selectedRows() const
{
    QList<int> indices;
    for (int index = 0; index < count(); ++index) {
        if (row(index).selected)
            indices.append(index);
    }
    return indices;
}

int ListRows::current() const
{
    return indexOf(m_current);
}

void ListRows::setCurrent(int index)
{
    for (auto& stored : m_rows)
        stored->row.selected = false;
    m_current = index >= 0 && index < count() ? m_rows[index].get() : nullptr;
    if (m_current)
        m_current->row.selected = true;
    Q_EMIT selectionChanged();
    Q_EMIT currentChanged(index);
}

void ListRows::noteCurrent(int index)
{
    m_current = index >= 0 && index < count() ? m_rows[index].get() : nullptr;
}

int ListRows::placeFor(const Stored& stored) const
{
    const auto place = std::upper_bound(
        m_rows.begin(), m_rows.end(), stored,
        [this](const Stored& value, const auto& element) { return isBefore(value, *element); });
    return static_cast<int>(place - m_rows.begin());
}

bool ListRows::isBefore(const Stored& left, const Stored& right) const
{
    if (left.row.staysLast || right.row.staysLast)
        return !left.row.staysLast;
    const int order = left.sortKey->compare(*right.sortKey);
    return m_sortOrder == Qt::AscendingOrder ? order < 0 : order > 0;
}

void ListRows::makeSortKey(Stored& stored) const
{
    const ListCell& cell = stored.row.cells[m_sortColumn];
    stored.sortKey = germanOrder().sortKey(sortText(cell, m_columns[m_sortColumn].sortsBy));
}

int ListRows::indexOf(const Stored* stored) const
{
    if (!stored)
        return -1;
    if (!m_numbered)
        renumber();
    return stored->index;
}

void ListRows::renumber() const
{
    for (int index = 0; index < count(); ++index)
        m_rows[index]->index = index;
    m_numbered = true;
}

void ListRows::forget(const Stored* stored)
{
    if (m_byKey.value(stored->row.key) == stored)
        m_byKey.remove(stored->row.key);
    if (m_current == stored)
        m_current = nullptr;
}

} // namespace kalmo::toolkit
