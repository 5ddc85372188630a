#pragma once

#include <QTest>

#include <tuple>
#include <vector>

namespace kalmo::tests {

/// A table of named rows. `rows.each([&](const auto& reply, const auto& text) {...})` runs the body for each
/// row with the cells after its name. A row that fails is named, and the others run all the same.
template <typename... Columns>
class Rows
{
public:
    struct Row
    {
        Row(const char* rowName, Columns... columns) : name(rowName), cells(std::move(columns)...) {}
        const char* name;
        std::tuple<Columns...> cells;
    };

    Rows() = default;
    Rows(std::initializer_list<Row> rows) : m_rows(rows) {}
    Q_DISABLE_COPY_MOVE(Rows)
    void add(const char* name, Columns... columns) { m_rows.emplace_back(name, std::move(columns)...); }

    template <typename Body>
    void each(const Body& body) const
    {
        for (const Row& row : m_rows) {
            const bool hasFailed = QTest::currentTestFailed();
            if (hasFailed) // nothing tells the failures of two rows apart but this
                qWarning("after that, in the row \"%s\":", row.name);
            runRow(body, row);
            if (!hasFailed && QTest::currentTestFailed())
                qWarning("failed in the row \"%s\"", row.name);
        }
    }

    struct Iterator
    {
        const Row* row;
        const std::tuple<Columns...>& operator*() const { return row->cells; }
        void operator++() { ++row; }
        bool operator!=(const Iterator& other) const { return row != other.row; }
    };
    Iterator begin() const { return {m_rows.data()}; }
    Iterator end() const { return {m_rows.data() + m_rows.size()}; }

private:
    template <typename Body>
    static void runRow(const Body& body, const Row& row)
    {
        try {
            std::apply(body, row.cells);
        } catch (...) {
            qWarning("thrown in the row \"%s\"", row.name);
            throw;
        }
    }

    std::vector<Row> m_rows;
};

} // namespace kalmo::tests
