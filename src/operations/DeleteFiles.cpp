#include "operations/DeleteFiles.h"

#include "operations/FileStates.h"
#include "operations/ListingCache.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::operations {

using namespace Qt::StringLiterals;
using obex::PhonePath;

namespace {

class Deleter
{
public:
    Deleter(FileAccess& access, const std::vector<FileToDelete>& files, const DeletePolicy& policy,
            const DeleteEvents& events)
        : m_access(access), m_files(files), m_policy(policy), m_events(events), m_results(files.size())
    {
    }

    std::vector<FileOutcome> run();

private:
    void saveAll();
    std::optional<FileState> readForRecord(const FileToDelete& file, FileOutcome& result);
    void askAboutUnsaved();
    bool record();
    void deleteOne(size_t index);
    bool takeBackForce(const FileToDelete& file, const obex::tObxDirEntry& entry);
    void verify();
    void finish();
    bool isLeftOut(size_t index) const;

    FileAccess& m_access;
    const std::vector<FileToDelete>& m_files;
    const DeletePolicy& m_policy;
    const DeleteEvents& m_events;
    std::vector<FileOutcome> m_results;
    std::vector<FileState> m_states;
    QString m_recordId;
    SaveFault m_saveFault; // without a record
};

bool Deleter::isLeftOut(size_t index) const
{
    return m_files[index].obstacle != FileObstacle::None || m_results[index].cause != Cause::None;
}

/// A file that should be readable is read a second time after a refusal: the phone may have been busy.
std::optional<FileState> Deleter::readForRecord(const FileToDelete& file, FileOutcome& result)
{
    auto state = readState(m_access, file.path, &*file.entry, result);
    const bool isReadable = (file.entry->userPerm & obex::MayRead) != 0;
    if (state || !isReadable || result.cause != Cause::PhoneRefused || !m_access.goesOn())
        return state;
    result = {};
    return readState(m_access, file.path, &*file.entry, result);
}

/// Reads what is to go. After a failure that ends the whole, nothing is deleted that is not read yet.
void Deleter::saveAll()
{
    bool hasFailed = false;
    for (size_t index = 0; index < m_files.size(); ++index) {
        const FileToDelete& file = m_files[index];
        if (file.obstacle != FileObstacle::None)
            continue;
        if (hasFailed || !m_access.goesOn()) {
            m_results[index].cause = m_access.isStopped() ? Cause::Interrupted : Cause::NotSaved;
            continue;
        }
        if (m_events.saving)
            m_events.saving(file);
        const auto state = readForRecord(file, m_results[index]);
        if (state)
            m_states.push_back(*state);
        else
            hasFailed = m_policy.stopsAtFailure && m_results[index].cause != Cause::PhoneRefused;
    }
    askAboutUnsaved();
}

void Deleter::askAboutUnsaved()
{
    const auto isUnreadable = [&](size_t index) { return m_results[index].cause == Cause::PhoneRefused; };
    QStringList names;
    for (size_t index = 0; index < m_files.size(); ++index) {
        if (isUnreadable(index))
            names.append(m_files[index].path.name());
    }
    const bool mayLose = !names.isEmpty() && m_events.mayLose && m_events.mayLose(names);
    for (size_t index = 0; index < m_files.size(); ++index) {
        if (isUnreadable(index) && mayLose)
            m_results[index].cause = Cause::None;
        else if (m_results[index].cause == Cause::PhoneRefused || m_results[index].cause == Cause::Mismatch)
            m_results[index].cause = Cause::NotSaved;
    }
}

bool Deleter::record()
{
    if (m_states.empty())
        return true; // nothing that could be put back
    m_recordId =
        beginFilesRecord(m_access, RecordCause::RemoveFiles, m_states, &m_saveFault).value_or(QString());
    return !m_recordId.isEmpty();
}

void Deleter::deleteOne(size_t index)
{
    const FileToDelete& file = m_files[index];
    FileOutcome& result = m_results[index];
    if (!m_access.enter(file.path.folder())) {
        m_access.blame(result);
        return;
    }
    result.isConfirmed =
        m_access.client().Del(file.entry->name, m_access.progress(), nullptr, false, m_policy.force);
    if (result.isConfirmed) {
        result.state = State::Done;
        return;
    }
    m_access.blame(result);
    const bool isCertain = !m_access.client().wasLastSent() || result.cause == Cause::PhoneRefused;
    if (isCertain && !m_policy.force)
        return;
    const auto listing = m_access.look(file.path.folder());
    const obex::tObxDirEntry* entry = listing ? findEntry(*listing, file.path.name()) : nullptr;
    if (!listing)
        result.state = State::Unknown;
    else if (!entry)
        result = {.state = State::Done, .isVerified = true};
    else if (!takeBackForce(file, *entry))
        result.state = State::Unknown;
}

/// Gives a file that could not be deleted the rights back that force has changed.
bool Deleter::takeBackForce(const FileToDelete& file, const obex::tObxDirEntry& entry)
{
    const obex::clsMmc::Quiet quiet(m_access.client());
    const FileState before{
        .path = file.path, .userPerm = file.entry->userPerm, .groupPerm = file.entry->groupPerm};
    return restoreRights(m_access, before, entry);
}

/// A look into each folder: what the phone has confirmed must not be there any more.
void Deleter::verify()
{
    ListingCache listings([this](const PhonePath& folder) { return m_access.look(folder); });
    for (size_t index = 0; index < m_files.size(); ++index) {
        FileOutcome& result = m_results[index];
        const FileToDelete& file = m_files[index];
        const FolderListing* listing = result.isConfirmed ? listings.of(file.path.folder()) : nullptr;
        if (!listing)
            continue;
        result.isVerified = !findEntry(*listing, file.path.name());
        if (!result.isVerified) {
            result.state = State::Unchanged;
            result.cause = Cause::Mismatch;
        }
    }
}

void Deleter::finish()
{
    if (m_recordId.isEmpty())
        return;
    QJsonArray items;
    for (size_t index = 0; index < m_files.size(); ++index) {
        items.append(QJsonObject{{u"path"_s, m_files[index].path.shown()},
                                 {u"state"_s, wordOf(m_results[index].state)}});
    }
    Outcome sum = sumOf(m_results);
    sum.recordId = m_recordId;
    finishFilesRecord(m_access, sum, items);
}

std::vector<FileOutcome> Deleter::run()
{
    saveAll();
    const bool isRecorded = record();
    bool hasFailed = false;
    for (size_t index = 0; index < m_files.size(); ++index) {
        FileOutcome& result = m_results[index];
        if (isLeftOut(index))
            continue;
        if (hasFailed || !m_access.goesOn()) {
            result.cause = hasFailed || m_access.isStopped() ? Cause::Interrupted : m_access.cause();
            continue;
        }
        if (!isRecorded) {
            result.cause = Cause::NotSaved;
            result.saveFault = m_saveFault;
            continue;
        }
        if (m_events.deleting)
            m_events.deleting(m_files[index]);
        deleteOne(index);
        hasFailed = m_policy.stopsAtFailure && result.state != State::Done;
    }
    verify();
    finish();
    for (size_t index = 0; index < m_files.size() && m_events.finished; ++index)
        m_events.finished(m_files[index], m_results[index]);
    return m_results;
}

/// A folder goes only if all that it holds goes before it: some phones delete it with its content.
void lookIntoFolder(FileAccess& access, std::vector<FileToDelete>& files, size_t index)
{
    FileToDelete& folder = files[index];
    const auto held = access.goesOn() ? access.list(folder.path) : std::nullopt;
    const auto goes = [&](const obex::tObxDirEntry& entry) {
        const PhonePath path = folder.path.below(entry.name);
        return std::any_of(files.begin(), files.begin() + static_cast<std::ptrdiff_t>(index),
                           [&](const FileToDelete& other) {
                               return other.obstacle == FileObstacle::None && other.path.isSamePlace(path);
                           });
    };
    if (!held)
        folder.obstacle = FileObstacle::FolderNotListed;
    else if (!std::ranges::all_of(*held, goes))
        folder.obstacle = FileObstacle::NotEmpty;
}

} // namespace

std::vector<FileToDelete> planDelete(const std::vector<PhonePath>& paths)
{
    std::vector<FileToDelete> files;
    for (const PhonePath& path : paths) {
        const bool isTwin = std::any_of(files.begin(), files.end(), [&](const FileToDelete& other) {
            return other.path.isSamePlace(path);
        });
        if (!isTwin)
            files.push_back({.path = path, .obstacle = obstacleAt(path)});
    }
    return files;
}

void lookBeforeDeleting(FileAccess& access, std::vector<FileToDelete>& files)
{
    ListingCache listings(
        [&access](const PhonePath& folder) { return access.goesOn() ? access.list(folder) : std::nullopt; });
    for (size_t index = 0; index < files.size(); ++index) {
        FileToDelete& file = files[index];
        if (file.obstacle != FileObstacle::None)
            continue;
        const FolderListing* listing = listings.of(file.path.folder());
        const obex::tObxDirEntry* entry = listing ? findEntry(*listing, file.path.name()) : nullptr;
        if (entry)
            file.entry = *entry;
        else
            file.obstacle = listing ? FileObstacle::NotThere : FileObstacle::FolderNotListed;
        if (entry && !entry->isFile())
            lookIntoFolder(access, files, index);
    }
}

std::vector<FileOutcome> applyDelete(FileAccess& access, const std::vector<FileToDelete>& files,
                                     const DeletePolicy& policy, const DeleteEvents& events)
{
    return Deleter(access, files, policy, events).run();
}

} // namespace kalmo::operations
