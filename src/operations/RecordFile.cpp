#include "operations/RecordFile.h"

#include "app/Files.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <array>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

namespace {

constexpr int recordVersion = 1;
constexpr qint64 longestHeader = 4 * 1024 * 1024;

struct ListWord
{
    RecordedList list;
    QLatin1StringView word;
};

constexpr std::array<ListWord, 5> listWords{{
    {RecordedList::Phonebook, "phonebook"_L1},
    {RecordedList::Providers, "providers"_L1},
    {RecordedList::Files, "files"_L1},
    {RecordedList::Ringtones, "ringtones"_L1},
    {RecordedList::AreaCodes, "areacodes"_L1},
}};

struct CauseWords
{
    RecordCause cause;
    QLatin1StringView words;
};

constexpr std::array<CauseWords, 12> causeWords{{
    {RecordCause::Write, "write"_L1},
    {RecordCause::Add, "add"_L1},
    {RecordCause::Change, "change"_L1},
    {RecordCause::Delete, "delete"_L1},
    {RecordCause::Import, "import"_L1},
    {RecordCause::Set, "set"_L1},
    {RecordCause::Undo, "undo"_L1},
    {RecordCause::PutFiles, "files put"_L1},
    {RecordCause::RemoveFiles, "files rm"_L1},
    {RecordCause::MoveFile, "files mv"_L1},
    {RecordCause::MakeFolder, "files mkdir"_L1},
    {RecordCause::SetRights, "files attr"_L1},
}};

QString checksum(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

QString timeText(const QDateTime& time)
{
    return time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs);
}

QJsonArray partHeaders(const std::vector<RecordedPart>& parts)
{
    QJsonArray headers;
    for (const RecordedPart& part : parts)
        headers.append(QJsonObject{
            {u"name"_s, part.name}, {u"size"_s, part.bytes.size()}, {u"sha256"_s, checksum(part.bytes)}});
    return headers;
}

std::optional<Record> parseHeader(const QJsonObject& header)
{
    const auto list = listOf(header[u"list"_s].toString());
    Record record{
        .id = header[u"id"_s].toString(),
        .time = QDateTime::fromString(header[u"time"_s].toString(), Qt::ISODateWithMs).toLocalTime(),
        .phone = {header[u"model"_s].toString(), header[u"serial"_s].toString()},
        .list = list.value_or(RecordedList::Phonebook),
        .cause = header[u"cause"_s].toString(),
        .entries = header[u"entries"_s].toInt(),
        .state = stateOf(header[u"state"_s].toString()),
        .details = header[u"details"_s].toObject(),
    };
    if (header[u"kalmoRecord"_s].toInt() != recordVersion || !list || !record.time.isValid())
        return {};
    return record;
}

/// Returns true if the parts' announced sizes are exactly what follows the header.
bool sizesAddUp(const QJsonArray& parts, qint64 rest)
{
    for (const QJsonValue& part : parts) {
        const qint64 size = part[u"size"_s].toInteger(-1);
        if (size < 0 || size > rest)
            return false;
        rest -= size;
    }
    return rest == 0;
}

bool readParts(QFile& file, const QJsonArray& headers, std::vector<RecordedPart>& parts)
{
    for (const QJsonValue& header : headers) {
        const QByteArray bytes = file.read(header[u"size"_s].toInteger());
        if (checksum(bytes) != header[u"sha256"_s].toString())
            return false;
        parts.push_back({header[u"name"_s].toString(), bytes});
    }
    return true;
}

} // namespace

QString wordOf(RecordedList list)
{
    const auto* row = std::find_if(listWords.begin(), listWords.end(),
                                   [list](const ListWord& candidate) { return candidate.list == list; });
    return row->word;
}

std::optional<RecordedList> listOf(const QString& word)
{
    for (const ListWord& row : listWords) {
        if (row.word == word)
            return row.list;
    }
    return {};
}

QString wordOf(RecordCause cause)
{
    const auto* row = std::ranges::find(causeWords, cause, &CauseWords::cause);
    return row->words;
}

std::optional<RecordCause> recordCauseOf(const QString& words)
{
    for (const CauseWords& row : causeWords) {
        if (row.words == words)
            return row.cause;
    }
    return {};
}

const RecordedPart* Record::part(const QString& name) const
{
    const auto found = std::find_if(before.begin(), before.end(), [&name](const RecordedPart& candidate) {
        return candidate.name == name;
    });
    return found == before.end() ? nullptr : &*found;
}

QByteArray recordBytes(const Record& record)
{
    QByteArray bytes = QJsonDocument(QJsonObject{
                                         {u"kalmoRecord"_s, recordVersion},
                                         {u"id"_s, record.id},
                                         {u"time"_s, timeText(record.time)},
                                         {u"model"_s, record.phone.model},
                                         {u"serial"_s, record.phone.serial},
                                         {u"list"_s, wordOf(record.list)},
                                         {u"cause"_s, record.cause},
                                         {u"entries"_s, record.entries},
                                         {u"state"_s, wordOf(record.state)},
                                         {u"details"_s, record.details},
                                         {u"parts"_s, partHeaders(record.before)},
                                     })
                           .toJson(QJsonDocument::Compact) +
                       '\n';
    for (const RecordedPart& part : record.before)
        bytes += part.bytes;
    return bytes;
}

std::optional<Record> readRecordFile(const QString& path, RecordDepth depth)
{
    QFile file(path);
    if (!app::FileExists(path) || !file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray line = file.readLine(longestHeader);
    const QJsonObject header = QJsonDocument::fromJson(line).object();
    const QJsonArray parts = header[u"parts"_s].toArray();
    auto record = parseHeader(header);
    if (!record || !line.endsWith('\n') || !sizesAddUp(parts, file.size() - line.size()))
        return {};
    if (depth == RecordDepth::WithParts && !readParts(file, parts, record->before))
        return {};
    return record;
}

} // namespace kalmo::operations
