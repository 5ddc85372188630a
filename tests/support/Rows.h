#pragma once

#include <QTest>

#include <tuple>
#include <vector>

namespace kalmo::tests {

/// A table of named rows, for `for (const auto& [reply, text] : rows)`: the loop gives what stands behind the
/// name. It ends with the first row that fails the test, and that row is named then.
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
    ~Rows()
    {
        if (m_current < m_rows.size() && QTest::currentTestFailed())
            qWarning("failed in the row \"%s\"", m_rows[m_current].name);
    }
    Q_DISABLE_COPY_MOVE(Rows)
    void add(const char* name, Columns... columns) { m_rows.emplace_back(name, std::move(columns)...); }

    struct End
    {
    };
    struct Iterator
    {
        const Rows& rows;
        const std::tuple<Columns...>& operator*() const { return rows.m_rows[rows.m_current].cells; }
        void operator++() { ++rows.m_current; }
        bool operator!=(End) const
        {
            if (rows.m_current > 0 && QTest::currentTestFailed())
                return --rows.m_current, false;
            return rows.m_current < rows.m_rows.size();
        }
    };
    Iterator begin() const
    {
        m_current = 0;
        return {*this};
    }
    End end() const { return {}; }

private:
    std::vector<Row> m_rows;
    mutable std::size_t m_current = 0;
};

} // namespace kalmo::tests
