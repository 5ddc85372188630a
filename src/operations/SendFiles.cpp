#include "operations/SendFiles.h"

#include "app/Files.h"
#include "app/SafeLocalName.h"
#include "operations/ReplaceFile.h"
#include "phonedata/BackupFiles.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::PhonePath;

namespace {

FileObstacle obstacleOf(const PlannedFile& planned)
{
    const QString name = planned.path.name();
    const QString& local = planned.file.localPath;
    if (!planned.file.bytes && !app::FileExists(local))
        return FileObstacle::NoLocalFile;
    if (planned.size > obex::largestObject)
        return FileObstacle::TooLarge;
    if (!planned.file.bytes && !QFile(local).open(QIODevice::ReadOnly))
        return FileObstacle::NotReadable;
    if (name.isEmpty())
        return FileObstacle::NoName;
    if (name.contains(u'\\') || name.contains(u'/'))
        return FileObstacle::BadName;
    if (planned.path.isTelecom())
        return FileObstacle::BelowTelecom;
    return planned.path.canBeMade() ? FileObstacle::None : FileObstacle::OtherName;
}

PlannedFile planOne(const PhonePath& folder, const FileToSend& file)
{
    const QString name =
        obex::nameAsSent(file.name.isEmpty() ? QFileInfo(file.localPath).fileName() : file.name);
    const qint64 size = file.bytes ? file.bytes->size() : QFileInfo(file.localPath).size();
    PlannedFile planned{.file = file, .path = folder.below(name), .size = size};
    planned.obstacle = obstacleOf(planned);
    return planned;
}

bool isTwin(const PlannedFile& one, const std::vector<PlannedFile>& others)
{
    return std::any_of(others.begin(), others.end(), [&](const PlannedFile& other) {
        return other.isPossible() && other.path.isSamePlace(one.path);
    });
}

/// The files of one plan on their way.
class Sender
{
public:
    Sender(FileAccess& access, const SendPlan& plan, const SendPolicy& policy, const SendEvents& events)
        : m_access(access), m_plan(plan), m_policy(policy), m_events(events), m_results(plan.files.size()),
          m_olds(plan.files.size())
    {
    }

    std::vector<FileOutcome> run();

private:
    bool saveOld(size_t index);
    bool copyOld(size_t index);
    bool record();
    void send(size_t index);
    void finish();
    bool isLeftOut(size_t index) const;

    FileAccess& m_access;
    const SendPlan& m_plan;
    const SendPolicy& m_policy;
    const SendEvents& m_events;
    std::vector<FileOutcome> m_results;
    std::vector<std::optional<FileState>> m_olds; // as the phone held them
    QString m_recordId;
    SaveFault m_saveFault; // without a record
};

bool Sender::isLeftOut(size_t index) const
{
    return !m_plan.files[index].isPossible() || m_results[index].cause != Cause::None;
}

/// Reads what the phone holds in the file's place.
bool Sender::saveOld(size_t index)
{
    const PlannedFile& file = m_plan.files[index];
    if (file.replaced && m_events.saving)
        m_events.saving(file);
    m_olds[index] =
        readState(m_access, file.path, file.replaced ? &*file.replaced : nullptr, m_results[index]);
    return m_olds[index] && (!file.replaced || copyOld(index));
}

/// Puts a copy into the folder for backups, where the user finds it as a file like any other.
bool Sender::copyOld(size_t index)
{
    app::Context& context = m_access.client().line().context();
    const FileState& old = *m_olds[index];
    const QString safeName = app::safeLocalName(old.path.name());
    const QFileInfo parts(safeName.isEmpty() ? u"file"_s : safeName);
    const QString ending = parts.suffix().isEmpty() ? QString() : u'.' + parts.suffix();
    const QString copy =
        phonedata::backupPath(context, parts.fileName().chopped(ending.size()) + u' ', ending);
    const bool isSaved = app::EnsureDirExists(context, QFileInfo(copy).path()) &&
                         m_access.client().SaveFile(old.bytes, copy, old.modified);
    if (isSaved)
        m_results[index].savedIn = copy;
    else
        m_results[index].cause = Cause::NotSaved;
    return isSaved;
}

/// Nothing is changed in the phone before the record is on the disk.
bool Sender::record()
{
    std::vector<FileState> states;
    for (size_t index = 0; index < m_olds.size(); ++index) {
        if (m_olds[index] && !isLeftOut(index))
            states.push_back(*m_olds[index]);
    }
    if (states.empty())
        return false;
    m_recordId = beginFilesRecord(m_access, RecordCause::PutFiles, states, &m_saveFault).value_or(QString());
    return !m_recordId.isEmpty();
}

void Sender::send(size_t index)
{
    const PlannedFile& file = m_plan.files[index];
    FileOutcome& result = m_results[index];
    FileState wanted{.path = file.path, .kind = FileState::Kind::File};
    if (file.file.bytes) {
        wanted.bytes = *file.file.bytes;
    } else if (!app::readWholeFile(file.file.localPath, wanted.bytes)) {
        result.cause = Cause::NotRead;
        result.code = obex::ReadFailed;
        return;
    }
    const QString copy = result.savedIn;
    result = replaceFile(m_access, *m_olds[index], wanted, OldFile::AsAllowed);
    result.savedIn = copy;
}

void Sender::finish()
{
    if (m_recordId.isEmpty())
        return;
    QJsonArray items;
    for (size_t index = 0; index < m_results.size(); ++index) {
        items.append(QJsonObject{{u"path"_s, m_plan.files[index].path.shown()},
                                 {u"bytes"_s, m_plan.files[index].size},
                                 {u"state"_s, wordOf(m_results[index].state)}});
    }
    Outcome sum = sumOf(m_results);
    sum.recordId = m_recordId;
    finishFilesRecord(m_access, sum, items);
}

std::vector<FileOutcome> Sender::run()
{
    bool hasFailed = false;
    for (size_t index = 0; index < m_olds.size(); ++index) {
        const PlannedFile& file = m_plan.files[index];
        if (!file.isPossible() || hasFailed || !m_access.goesOn())
            continue;
        hasFailed = !saveOld(index) && m_policy.stopsAtFailure;
    }
    const bool isRecorded = record();
    hasFailed = false;
    for (size_t index = 0; index < m_results.size(); ++index) {
        FileOutcome& result = m_results[index];
        if (!isLeftOut(index)) {
            if (hasFailed || !m_access.goesOn())
                result.cause = hasFailed || m_access.isStopped() ? Cause::Interrupted : m_access.cause();
            else if (!m_olds[index] || !isRecorded) {
                result.cause = Cause::NotSaved;
                result.saveFault = m_saveFault;
            } else {
                if (m_events.sending)
                    m_events.sending(m_plan.files[index]);
                send(index);
            }
        }
        const bool isFailure = m_plan.files[index].isPossible() && result.state != State::Done;
        hasFailed = hasFailed || (m_policy.stopsAtFailure && isFailure);
        if (m_events.finished)
            m_events.finished(m_plan.files[index], result);
    }
    finish();
    return m_results;
}

} // namespace

bool SendPlan::isAnyPossible() const
{
    return possible() > 0;
}

int SendPlan::possible() const
{
    return static_cast<int>(
        std::count_if(files.begin(), files.end(), [](const PlannedFile& file) { return file.isPossible(); }));
}

SendPlan planSend(const PhonePath& folder, const std::vector<FileToSend>& files)
{
    SendPlan plan{.folder = folder, .files = {}};
    for (const FileToSend& file : files) {
        PlannedFile planned = planOne(folder, file);
        if (planned.isPossible() && isTwin(planned, plan.files))
            planned.obstacle = FileObstacle::Twin;
        plan.files.push_back(planned);
    }
    return plan;
}

bool lookBeforeSending(FileAccess& access, SendPlan& plan, const SendPolicy& policy)
{
    const auto listing = access.list(plan.folder);
    if (!listing)
        return false;
    for (PlannedFile& file : plan.files) {
        const obex::tObxDirEntry* there = file.isPossible() ? findEntry(*listing, file.path.name()) : nullptr;
        if (there && !there->isFile())
            file.obstacle = FileObstacle::IsFolder;
        else if (there)
            file.replaced = *there;
    }
    requireRoom(plan, policy);
    return true;
}

bool requireRoom(SendPlan& plan, const SendPolicy& policy)
{
    std::optional<qint64> left = policy.freeBytes;
    for (PlannedFile& file : plan.files) {
        if (!left || !file.isPossible())
            continue;
        const qint64 freed = file.replaced ? file.replaced->size : 0;
        if (file.size > *left + (policy.countsRoomOfReplaced ? freed : 0))
            file.obstacle = FileObstacle::NoRoom;
        else
            *left += freed - file.size;
    }
    return std::ranges::none_of(
        plan.files, [](const PlannedFile& file) { return file.obstacle == FileObstacle::NoRoom; });
}

std::vector<FileOutcome> applySend(FileAccess& access, const SendPlan& plan, const SendPolicy& policy,
                                   const SendEvents& events)
{
    return Sender(access, plan, policy, events).run();
}

} // namespace kalmo::operations
