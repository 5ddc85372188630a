#include "support/AddressBooks.h"

#include <QStringEncoder>
#include <QtEndian>

namespace kalmo::tests {

namespace {

const QByteArray magic = QByteArray::fromHex("9ccbcb8d1375d211915800c04f7956a4");
constexpr int headerBytes = 0xA4;
constexpr qint64 millisecondsTo1970 = 11'644'473'600'000;

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray utf16(const QString& text)
{
    return QStringEncoder(QStringEncoder::Utf16LE)(text + QChar(0));
}

QByteArray counted(const QByteArray& bytes)
{
    return littleEndian(static_cast<quint32>(bytes.size())) + bytes;
}

} // namespace

WabBuilder::Property WabBuilder::wide(quint32 number, const QString& text)
{
    return {number << 16 | 0x1F, counted(utf16(text))};
}

WabBuilder::Property WabBuilder::narrow(quint32 number, const QByteArray& text)
{
    return {number << 16 | 0x1E, counted(text + '\0')};
}

WabBuilder::Property WabBuilder::wideList(quint32 number, const std::vector<QString>& texts)
{
    QByteArray elements;
    for (const QString& text : texts)
        elements += counted(utf16(text));
    return {number << 16 | 0x101F, littleEndian(static_cast<quint32>(texts.size())) + counted(elements)};
}

WabBuilder::Property WabBuilder::time(quint32 number, qint64 millisecondsSince1970)
{
    QByteArray bytes(8, '\0');
    qToLittleEndian((millisecondsSince1970 + millisecondsTo1970) * 10'000, bytes.data());
    return {number << 16 | 0x40, counted(bytes)};
}

void WabBuilder::add(const std::vector<Property>& properties, quint32 kind, quint32 live)
{
    QByteArray list;
    QByteArray data;
    for (const Property& property : properties) {
        list += littleEndian(property.tag);
        data += littleEndian(property.tag) + property.value;
    }
    const auto listSize = static_cast<quint32>(list.size());
    m_offsets.push_back(m_heap.size());
    m_heap += littleEndian(live) + littleEndian(kind) + littleEndian(static_cast<quint32>(m_offsets.size())) +
              littleEndian(static_cast<quint32>(properties.size())) + littleEndian(0x20) +
              littleEndian(listSize) + littleEndian(listSize) +
              littleEndian(static_cast<quint32>(data.size())) + list + data;
}

QByteArray WabBuilder::bytes(quint32 capacity) const
{
    const auto entries = static_cast<quint32>(m_offsets.size());
    const quint32 heap = headerBytes + capacity * 8;
    QByteArray book = magic + littleEndian(0) + littleEndian(entries);
    book += littleEndian(capacity * 8) + littleEndian(entries * 8) + littleEndian(headerBytes) +
            littleEndian(entries);
    for (int table = 1; table < 6; ++table)
        book += littleEndian(0) + littleEndian(0) + littleEndian(heap) + littleEndian(0);
    book.append(headerBytes - book.size(), '\0');
    for (quint32 entry = 0; entry < entries; ++entry)
        book += littleEndian(entry + 1) + littleEndian(heap + static_cast<quint32>(m_offsets[entry]));
    book.append(heap - book.size(), '\0');
    return book + m_heap;
}

} // namespace kalmo::tests
