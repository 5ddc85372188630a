#pragma once

#include <QByteArray>
#include <QString>

#include <utility>
#include <vector>

namespace kalmo::tests {

/// Builds Windows Address Books byte by byte, from the description of their layout.
class WabBuilder
{
public:
    struct Property
    {
        quint32 tag;
        QByteArray value; ///< of a multi-valued one with its element count in front
    };

    static Property wide(quint32 number, const QString& text);
    static Property narrow(quint32 number, const QByteArray& text);
    static Property wideList(quint32 number, const std::vector<QString>& texts);
    static Property time(quint32 number, qint64 millisecondsSince1970);

    void add(const std::vector<Property>& properties, quint32 kind = 1, quint32 live = 1);
    /// Lists the record of an index once more.
    void repeat(size_t record) { m_offsets.push_back(m_offsets[record]); }
    /// The book; `capacity` is what its tables have room for.
    QByteArray bytes(quint32 capacity = 500) const;

private:
    QByteArray m_heap;
    std::vector<qsizetype> m_offsets; // in the heap
};

} // namespace kalmo::tests
