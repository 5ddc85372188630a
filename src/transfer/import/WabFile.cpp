#include "transfer/import/WabFile.h"

#include "app/CodePage.h"

#include <QDateTime>
#include <QSet>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace kalmo::transfer {

namespace {

constexpr QByteArrayView todaysMagic("\x9C\xCB\xCB\x8D\x13\x75\xD2\x11\x91\x58\x00\xC0\x4F\x79\x56\xA4", 16);
// Books of Windows 95. The same bytes occur further inside today's books.
constexpr QByteArrayView oldMagic("\x81\x32\x84\xC1\x85\x05\xD0\x11\xB2\x90\x00\xAA\x00\x3C\xF6\x76", 16);

constexpr qint64 headerSize = 0xA4;
constexpr qint64 firstDescriptor = 0x18; ///< six: allocated bytes, used bytes, offset, entries
constexpr qint64 descriptorSize = 16;
constexpr int tableCount = 6;
constexpr qint64 indexEntrySize = 8; ///< record id, offset of the record
constexpr qint64 recordHeaderSize = 0x20;
constexpr quint32 liveRecord = 1;
constexpr quint32 contactKind = 1; ///< 2 is a group, 3 a folder
constexpr quint32 mostProperties = 500;

constexpr quint32 multiValued = 0x1000;
constexpr quint32 bits8 = 0x001E;
constexpr quint32 bits16 = 0x001F;
constexpr quint32 systemTime = 0x0040;

/// Properties of telephone numbers that a contact has no field for: of a second number at home or at work, a
/// car, a pager and the like.
constexpr std::array<quint32, 6> otherNumbers = {0x3A1A, 0x3A1B, 0x3A1E, 0x3A1F, 0x3A21, 0x3A2F};

/// Reads bytes in order, and fails at their end.
class WabBytes
{
public:
    explicit WabBytes(QByteArrayView bytes, qint64 place = 0) : m_bytes(bytes), m_place(place) {}

    bool isGood() const { return m_good; }
    qint64 place() const { return m_place; }
    quint32 number()
    {
        const QByteArrayView taken = take(4);
        return m_good ? qFromLittleEndian<quint32>(taken.data()) : 0;
    }
    QByteArrayView take(qint64 size)
    {
        m_good = m_good && m_place >= 0 && size >= 0 && size <= m_bytes.size() - m_place;
        if (!m_good)
            return {};
        m_place += size;
        return m_bytes.sliced(m_place - size, size);
    }

private:
    QByteArrayView m_bytes;
    qint64 m_place;
    bool m_good = true;
};

struct WabTable
{
    qint64 offset = 0;
    qint64 entries = 0;
};

WabTable tableAt(QByteArrayView bytes, int index)
{
    WabBytes reader(bytes, firstDescriptor + index * descriptorSize);
    reader.take(8); // the sizes differ from book to book
    WabTable table;
    table.offset = reader.number();
    table.entries = reader.number();
    return table;
}

QString wabText(QByteArrayView value, quint32 type)
{
    if (type == bits16) {
        QString text;
        for (qsizetype index = 0; index + 1 < value.size(); index += 2) {
            const auto unit = qFromLittleEndian<quint16>(value.data() + index);
            if (unit == 0)
                break;
            text.append(QChar(unit));
        }
        return text.normalized(QString::NormalizationForm_C);
    }
    const qsizetype end = value.indexOf('\0');
    return app::fromCp1252(end < 0 ? value : value.first(end));
}

/// A moment counted in 100 ns from 1601 as the local day that it was made from.
std::optional<QDate> localDay(QByteArrayView value)
{
    constexpr qint64 unitsPerMillisecond = 10'000;
    constexpr qint64 millisecondsTo1970 = 11'644'473'600'000;
    constexpr qint64 mostMilliseconds = 264'000'000'000'000; // beyond the year 9900
    if (value.size() != 8)
        return std::nullopt;
    const auto units = qFromLittleEndian<quint64>(value.data());
    const auto milliseconds = static_cast<qint64>(units / unitsPerMillisecond);
    if (units == 0 || milliseconds > mostMilliseconds)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(milliseconds - millisecondsTo1970).date();
}

/// The elements of a multi-valued text, parted by "|".
QString joinedTexts(WabBytes& reader, quint32 type)
{
    const quint32 count = reader.number();
    WabBytes elements(reader.take(reader.number()));
    QStringList texts;
    for (quint32 index = 0; index < count && elements.isGood(); ++index) {
        const quint32 size = elements.number();
        const QString text = wabText(elements.take(size), type & ~multiValued);
        if (elements.isGood())
            texts.append(text);
    }
    return texts.join(u'|');
}

bool isText(quint32 type)
{
    return (type & ~multiValued) == bits8 || (type & ~multiValued) == bits16;
}

/// Takes one property's value and stores it where the contact has a field for it.
void takeProperty(WabBytes& reader, quint32 tag, WabContact& contact)
{
    const quint32 type = tag & 0xFFFF;
    if ((type & multiValued) != 0) {
        if (!isText(type)) {
            reader.number();
            reader.take(reader.number());
            return;
        }
        const QString texts = joinedTexts(reader, type);
        if (reader.isGood() && (tag >> 16) == (tags::emails >> 16))
            storeEmails(contact, texts);
        return;
    }
    const QByteArrayView value = reader.take(reader.number());
    if (!reader.isGood())
        return;
    if (tag == tags::birthday)
        contact.birthday = type == systemTime ? localDay(value) : std::nullopt;
    if (!isText(type))
        return;
    const quint32 described = (tag & ~quint32{0xFFFF}) | bits8; // real books have either type of string
    if (described == tags::email)
        storeEmails(contact, wabText(value, type));
    else if (QString WabContact::*field = fieldOfTag(described))
        contact.*field = wabText(value, type);
    else if (std::ranges::find(otherNumbers, tag >> 16) != otherNumbers.end())
        contact.numbersWithoutPlace += wabText(value, type).isEmpty() ? 0 : 1;
}

class WabReader
{
public:
    explicit WabReader(QByteArrayView bytes) : m_bytes(bytes) {}

    WabBook read();

private:
    bool readIndex();
    void walkHeap();
    void takeRecord(qint64 offset);
    qint64 heapStart() const;
    /// Size of the record there, 0 if there is none.
    qint64 sizeOfRecord(qint64 offset) const;

    QByteArrayView m_bytes;
    WabBook m_book;
    QSet<qint64> m_seen;
    qint64 m_lengthsRead = 0;
};

WabBook WabReader::read()
{
    if (m_bytes.startsWith(oldMagic))
        m_book.fault = WabFault::OldLayout;
    else if (m_bytes.size() < headerSize || !m_bytes.startsWith(todaysMagic))
        m_book.fault = WabFault::NotAnAddressBook;
    else if (!readIndex())
        walkHeap();
    if (m_book.contacts.size() > mostContacts)
        m_book = {.fault = WabFault::TooManyContacts};
    else if (m_book.contacts.empty() && m_book.damagedRecords > 0)
        m_book = {.fault = WabFault::Damaged};
    return m_book;
}

/// Returns false if the index can't be used.
bool WabReader::readIndex()
{
    const WabTable index = tableAt(m_bytes, 0);
    if (index.entries > m_bytes.size() / indexEntrySize || index.offset < headerSize ||
        index.offset + index.entries * indexEntrySize > m_bytes.size())
        return false;
    WabBytes entries(m_bytes, index.offset);
    for (qint64 entry = 0; entry < index.entries; ++entry) {
        entries.number(); // the record's id stands in the record too
        takeRecord(entries.number());
    }
    return true;
}

/// Reads the records one after the other, for a book whose index is lost. Bytes between them are a damaged
/// record, and the header may tell of more.
void WabReader::walkHeap()
{
    int gaps = 0;
    bool isInGap = false;
    for (qint64 offset = heapStart(), size = 0; offset < m_bytes.size();
         offset += std::max<qint64>(size, 1)) {
        size = sizeOfRecord(offset);
        if (size > 0)
            takeRecord(offset);
        const bool isGap = size == 0 && (isInGap || m_bytes[offset] != '\0');
        gaps += isGap && !isInGap ? 1 : 0;
        isInGap = isGap;
    }
    const qint64 missing = tableAt(m_bytes, 0).entries - m_seen.size();
    m_book.damagedRecords =
        std::max(gaps, missing > 0 && missing <= qint64{mostContacts} ? static_cast<int>(missing) : 0);
}

qint64 WabReader::heapStart() const
{
    qint64 start = headerSize;
    for (int table = 1; table < tableCount; ++table) {
        WabBytes reader(m_bytes, firstDescriptor + table * descriptorSize);
        const qint64 allocated = reader.number();
        reader.number();
        const qint64 offset = reader.number();
        if (offset + allocated <= m_bytes.size())
            start = std::max(start, offset + allocated);
    }
    return start;
}

qint64 WabReader::sizeOfRecord(qint64 offset) const
{
    WabBytes header(m_bytes, offset);
    if (offset < 0 || offset > m_bytes.size() - recordHeaderSize)
        return 0;
    header.take(12);
    const quint32 properties = header.number();
    const quint32 listOffset = header.number();
    const quint32 listSize = header.number();
    const quint32 dataStart = header.number();
    const quint32 dataSize = header.number();
    const bool isRecord = listOffset == recordHeaderSize && properties <= mostProperties &&
                          listSize == properties * 4 && dataStart == listSize;
    const qint64 size = recordHeaderSize + qint64{listSize} + qint64{dataSize};
    return isRecord && size <= m_bytes.size() - offset ? size : 0;
}

void WabReader::takeRecord(qint64 offset)
{
    if (m_seen.contains(offset))
        return;
    m_seen.insert(offset);
    const qint64 size = sizeOfRecord(offset);
    m_lengthsRead += size;
    // Records that overlap would cost time out of proportion to the file.
    if (size == 0 || m_lengthsRead > m_bytes.size()) {
        ++m_book.damagedRecords;
        return;
    }
    const QByteArrayView record = m_bytes.sliced(offset, size);
    WabBytes reader(record);
    const bool isLive = reader.number() == liveRecord;
    const bool isContact = reader.number() == contactKind;
    if (!isLive || !isContact || m_book.contacts.size() > mostContacts)
        return;
    reader.number();
    const quint32 properties = reader.number();
    WabBytes list(record, recordHeaderSize);
    WabBytes data(record, recordHeaderSize + qint64{properties} * 4);
    WabContact contact;
    for (quint32 property = 0; property < properties && data.isGood(); ++property) {
        const quint32 tag = list.number();
        contact.isCutOff = data.number() != tag;
        if (contact.isCutOff)
            break;
        takeProperty(data, tag, contact);
    }
    contact.isCutOff = contact.isCutOff || !data.isGood();
    if (contact == WabContact{.isCutOff = true}) {
        ++m_book.damagedRecords;
        return;
    }
    contact.entryNumber = static_cast<int>(m_book.contacts.size()) + 1;
    m_book.contacts.push_back(contact);
}

} // namespace

bool isWabFile(QByteArrayView bytes)
{
    return bytes.startsWith(todaysMagic) || bytes.startsWith(oldMagic);
}

WabBook readWabFile(QByteArrayView bytes)
{
    return WabReader(bytes).read();
}

} // namespace kalmo::transfer
