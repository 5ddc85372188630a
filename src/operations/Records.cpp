#include "operations/Records.h"

#include "app/Files.h"

#include <QDir>
#include <QLockFile>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;

namespace {

constexpr int longestNamePart = 60;
constexpr int lockPatience = 2000; // milliseconds; another process holds the lock for one write at most
constexpr qint64 largestNumber = 999'999'999;
const QString recordEnding = u".record"_s;

/// A model or serial number as part of a folder's name: letters, digits and a few signs, no dot in front.
QString folderWord(const QString& text)
{
    QString word = text.left(longestNamePart);
    for (QChar& c : word) {
        const bool isPlain = c.unicode() < 128 && (c.isLetterOrNumber() || u"-+."_s.contains(c));
        if (!isPlain)
            c = u'_';
    }
    if (word.isEmpty() || word.startsWith(u'.'))
        word.prepend(u'_');
    return word;
}

/// The number in an id or the base name of a file, 0 if it is none.
qint64 numberOf(const QString& text)
{
    const bool isDigits =
        std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const qint64 number = isDigits && text.size() <= 9 ? text.toLongLong() : 0;
    return QString::number(number) == text ? number : 0;
}

QString rootOf(const app::Context& context)
{
    return QDir(context.sy.Paths.Storage).filePath(u"Verlauf"_s);
}

/// The numbers of the files in a folder, the largest first, broken files included: no number is given twice.
std::vector<qint64> numbersIn(const QString& folder)
{
    std::vector<qint64> found;
    const QStringList names = QDir(folder).entryList({u'*' + recordEnding}, QDir::Files);
    for (const QString& name : names) {
        if (const qint64 number = numberOf(name.chopped(recordEnding.size())); number > 0)
            found.push_back(number);
    }
    std::sort(found.begin(), found.end(), std::greater());
    return found;
}

QString recordPath(const QString& folder, qint64 number)
{
    return QDir(folder).filePath(QString::number(number) + recordEnding);
}

/// The headers of a folder's records, the newest first.
std::vector<Record> headersIn(const QString& folder)
{
    std::vector<Record> records;
    for (const qint64 number : numbersIn(folder)) {
        auto record = readRecordFile(recordPath(folder, number), RecordDepth::HeaderOnly);
        if (record && numberOf(record->id) == number)
            records.push_back(std::move(*record));
    }
    return records;
}

void sortNewestFirst(std::vector<Record>& records)
{
    std::sort(records.begin(), records.end(),
              [](const Record& left, const Record& right) { return numberOf(left.id) > numberOf(right.id); });
}

QStringList foldersIn(const QString& root)
{
    QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    for (QString& folder : folders)
        folder = QDir(root).filePath(folder);
    return folders;
}

void setFault(SaveFault* fault, SaveFault::Kind kind, const QString& detail)
{
    if (fault)
        *fault = {kind, detail};
}

} // namespace

Records::Records(const app::Context& context, PhoneIdentity phone)
    : m_context(context), m_phone(std::move(phone)), m_root(rootOf(context)), m_folder(folderOf(m_phone))
{
}

QString Records::folderOf(const PhoneIdentity& phone) const
{
    return QDir(m_root).filePath(u"%1_%2"_s.arg(folderWord(phone.model), folderWord(phone.serial)));
}

/// This phone, and the one of its model whose serial number could not be asked for.
std::vector<PhoneIdentity> Records::candidates() const
{
    const PhoneIdentity unknown{m_phone.model, unknownSerial()};
    return m_phone == unknown ? std::vector{m_phone} : std::vector{m_phone, unknown};
}

bool Records::mayBeOfAnotherPhone(const Record& record)
{
    return record.phone.serial == unknownSerial();
}

std::optional<QString> Records::begin(RecordedList list, RecordCause cause, int entries,
                                      std::vector<RecordedPart> before, SaveFault* fault)
{
    if (!QDir().mkpath(m_folder)) {
        setFault(fault, SaveFault::Kind::System, u"%1: %2"_s.arg(m_folder, qt_error_string()));
        return {};
    }
    QLockFile lock(lockPath());
    if (!lock.tryLock(lockPatience)) {
        setFault(fault, SaveFault::Kind::Locked, m_root);
        return {};
    }
    removeLeftovers();
    const qint64 number = nextNumber();
    if (number > largestNumber) {
        setFault(fault, SaveFault::Kind::NoNumberLeft, m_root);
        return {};
    }
    const Record record{.id = QString::number(number),
                        .time = m_context.clock.Now(),
                        .phone = m_phone,
                        .list = list,
                        .cause = wordOf(cause),
                        .entries = entries,
                        .before = std::move(before)};
    QString error;
    if (!app::writeWholeFile(pathOf(number), recordBytes(record), &error)) {
        setFault(fault, SaveFault::Kind::System, u"%1: %2"_s.arg(pathOf(number), error));
        return {};
    }
    app::syncFolder(m_folder);
    app::syncFolder(m_root);
    return record.id;
}

bool Records::finish(const QString& id, State state, const QJsonObject& details)
{
    QLockFile lock(lockPath());
    auto record = read(id);
    if (!record || !lock.tryLock(lockPatience))
        return false;
    record->state = state;
    record->details = details;
    if (!app::writeWholeFile(recordPath(folderOf(record->phone), numberOf(id)), recordBytes(*record)))
        return false;
    if (state == State::Done)
        removeOldest();
    return true;
}

std::vector<Record> Records::all() const
{
    std::vector<Record> records;
    for (const PhoneIdentity& phone : candidates()) {
        auto some = headersIn(folderOf(phone));
        std::erase_if(some, [&](const Record& record) { return record.phone != phone; });
        std::move(some.begin(), some.end(), std::back_inserter(records));
    }
    sortNewestFirst(records);
    return records;
}

std::vector<Record> Records::ofAllPhones(const app::Context& context)
{
    std::vector<Record> records;
    for (const QString& folder : foldersIn(rootOf(context))) {
        auto some = headersIn(folder);
        std::move(some.begin(), some.end(), std::back_inserter(records));
    }
    sortNewestFirst(records);
    return records;
}

std::optional<Record> Records::read(const QString& id) const
{
    const qint64 number = numberOf(id);
    for (const PhoneIdentity& phone : candidates()) {
        auto record = number > 0 ? readRecordFile(recordPath(folderOf(phone), number), RecordDepth::WithParts)
                                 : std::nullopt;
        if (record && record->phone == phone && record->id == id)
            return record;
    }
    return std::nullopt;
}

QString Records::pathOf(qint64 number) const
{
    return recordPath(m_folder, number);
}

/// Two programs with two phones may look for the next number at the same time.
QString Records::lockPath() const
{
    return QDir(m_root).filePath(u".lock"_s);
}

qint64 Records::nextNumber() const
{
    qint64 largest = 0;
    for (const QString& folder : foldersIn(m_root)) {
        const auto taken = numbersIn(folder);
        largest = std::max(largest, taken.empty() ? 0 : taken.front());
    }
    return largest + 1;
}

/// A kill in the middle of a write leaves the unfinished file under a temporary name.
void Records::removeLeftovers() const
{
    const QStringList names = QDir(m_folder).entryList({u'*' + recordEnding + u".??????"_s}, QDir::Files);
    for (const QString& name : names)
        app::DeleteQuiet(QDir(m_folder).filePath(name));
}

void Records::removeOldest() const
{
    const auto found = numbersIn(m_folder);
    for (std::size_t i = mostRecords; i < found.size(); ++i)
        app::DeleteQuiet(pathOf(found[i]));
}

} // namespace kalmo::operations
