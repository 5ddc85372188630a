#include "handset/obex/ObjectStore.h"

#include <QRegularExpression>
#include <QtEndian>

namespace kalmo::handset {

using namespace Qt::StringLiterals;

namespace {

constexpr double listSeconds = 0.05;
constexpr double listSecondsPerRow = 0.001;
constexpr double writeSeconds = 0.15;
constexpr double removeSeconds = 0.5;
constexpr qint64 largestItem = 65536; // bytes of one contact or appointment
const QString telecomFolder = u"telecom"_s;

const QByteArray cardPath = // its length, and "\\MMCard" in 16-bit characters
    QByteArray::fromHex("10 005C 004D 004D 0043 0061 0072 0064 0000");

enum MemoryQuery : quint8 { AllMemory = 1, FreeMemory = 2 };

quint8 codeOf(FileResult result)
{
    switch (result) {
    case FileResult::Done:
        return obex::Success;
    case FileResult::NotFound:
        return obex::NotFound;
    case FileResult::Refused:
    case FileResult::NotEmpty:
        return obex::PreconditionFailed;
    case FileResult::Exists:
        return obex::Forbidden;
    case FileResult::Full:
        return obex::DatabaseFull;
    }
    return obex::BadRequest;
}

ListingRow rowOf(const FileNode& node)
{
    return {node.isFolder, node.name, node.content.size(), node.modified, node.user, node.group};
}

} // namespace

bool isTelecom(const QStringList& path)
{
    return !path.isEmpty() && path.first().compare(telecomFolder, Qt::CaseInsensitive) == 0;
}

ObjectReply ObjectStore::done(FileResult result, double seconds)
{
    if (result == FileResult::Done)
        m_phone.keepFiles();
    return {.code = codeOf(result), .seconds = seconds};
}

bool ObjectStore::has(const QStringList& path)
{
    if (isTelecom(path))
        return m_telecom.hasItem(path.sliced(1));
    return hasFiles() && m_phone.files.find(path);
}

bool ObjectStore::isFolder(const QStringList& path)
{
    if (isTelecom(path))
        return m_telecom.isFolder(path.sliced(1));
    const FileNode* node = hasFiles() || path.isEmpty() ? m_phone.files.find(path) : nullptr;
    return node && node->isFolder;
}

ObjectReply ObjectStore::list(const QStringList& path)
{
    if (!isFolder(path))
        return {.code = obex::NotFound};
    std::vector<ListingRow> rows;
    if (path.isEmpty())
        rows.push_back({.isFolder = true, .name = telecomFolder});
    if (isTelecom(path)) {
        rows = m_telecom.list(path.sliced(1));
    } else if (hasFiles()) {
        const FileNode& folder = *m_phone.files.find(path);
        for (const auto& node : folder.children)
            rows.push_back(rowOf(*node));
        if (folder.holdsItself)
            rows.push_back(rowOf(folder));
    }
    return {.content = listingText(rows, m_phone.options.listing),
            .seconds = listSeconds + listSecondsPerRow * static_cast<double>(rows.size())};
}

ObjectReply ObjectStore::makeFolder(const QStringList& path)
{
    if (isTelecom(path) || !hasFiles())
        return {.code = obex::Forbidden};
    if (m_phone.faults.full)
        return {.code = obex::DatabaseFull};
    return done(m_phone.files.makeFolder(path, m_time.dateTime()), writeSeconds);
}

ObjectReply ObjectStore::get(const QStringList& path)
{
    if (isTelecom(path))
        return m_telecom.get(path.sliced(1));
    const FileNode* node = hasFiles() ? m_phone.files.find(path) : nullptr;
    if (!node || node->isFolder)
        return {.code = obex::NotFound};
    if (!node->canRead())
        return {.code = obex::Forbidden};
    return {.content = node->content};
}

quint8 ObjectStore::room(const QStringList& path, qint64 size)
{
    if (isTelecom(path))
        return size > largestItem ? obex::TooLarge : obex::Success;
    if (!hasFiles())
        return obex::Forbidden;
    const FileNode* there = m_phone.files.find(path);
    const qint64 more = size - (there ? there->size() : 0);
    return m_phone.faults.full || more > m_phone.files.free() ? obex::DatabaseFull : obex::Success;
}

ObjectReply ObjectStore::put(const QStringList& path, ChangeRequest request)
{
    request.answersLuid = m_irmc;
    if (isTelecom(path))
        return m_telecom.put(path.sliced(1), request);
    if (!hasFiles())
        return {.code = obex::Forbidden};
    if (!request.modified.isValid())
        request.modified = m_time.dateTime();
    return done(m_phone.files.put(path, request.content, request.modified), writeSeconds);
}

ObjectReply ObjectStore::remove(const QStringList& path, ChangeRequest request)
{
    request.answersLuid = m_irmc;
    if (isTelecom(path))
        return m_telecom.remove(path.sliced(1), request);
    return hasFiles() ? done(m_phone.files.remove(path), removeSeconds)
                      : ObjectReply{.code = obex::Forbidden};
}

ObjectReply ObjectStore::move(const QStringList& from, const QStringList& to)
{
    if (isTelecom(from) || isTelecom(to) || !hasFiles())
        return {.code = obex::Forbidden};
    return done(m_phone.files.move(from, to), writeSeconds);
}

ObjectReply ObjectStore::setRights(const QStringList& path, const QByteArray& text)
{
    static const QRegularExpression form(u"^\"(R?W?D?)\"\"(R?W?D?)\"$"_s);
    const auto match = form.match(QString::fromLatin1(text));
    if (!match.hasMatch()) {
        m_phone.violations.record(u"malformed permissions: "_s + QString::fromLatin1(text));
        return {.code = obex::BadRequest};
    }
    if (isTelecom(path) || !hasFiles())
        return {.code = obex::Forbidden};
    return done(m_phone.files.setRights(path, match.captured(1), match.captured(2)), writeSeconds);
}

ObjectReply ObjectStore::memory(const QByteArray& query)
{
    const quint8 kind = query.isEmpty() ? 0 : static_cast<quint8>(query.front());
    if (kind != AllMemory && kind != FreeMemory)
        return {.code = obex::BadRequest};
    const bool ofCard = query.sliced(1) == cardPath;
    if (!ofCard && query.size() > 1)
        return {.code = obex::NotFound};
    if (ofCard ? m_phone.options.memoryCard == 0 : !hasFiles())
        return {.code = obex::NotFound};
    // The card is there, but nothing can be put on it.
    const qint64 all = ofCard ? m_phone.options.memoryCard : m_phone.files.capacity();
    const qint64 free = ofCard ? m_phone.options.memoryCard : m_phone.files.free();
    const auto bytes = bigEndian(static_cast<quint32>(kind == AllMemory ? all : free));
    return {.headers = header(obex::Parameters, parameter(TagMemory, bytes))};
}

} // namespace kalmo::handset
