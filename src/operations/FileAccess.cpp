#include "operations/FileAccess.h"

#include "obex/Patience.h"

#include <algorithm>

namespace kalmo::operations {

using obex::clsMmc;
using obex::PhonePath;
using obex::tObxDirEntry;

namespace {
constexpr double patienceAfterSilence = 5; // seconds for the answer to a new connect
}

FileAccess::FileAccess(const std::shared_ptr<clsMmc>& client, const QString& name,
                       const toolkit::Progress& progress)
    : m_client(client), m_operation(*client, name, progress), m_busy(*client)
{
}

bool FileAccess::isStopped() const
{
    return progress().cancelled() || m_client->stopAsked();
}

bool FileAccess::canSend()
{
    if (m_isLost || !m_operation.isAllowed() || !m_client->line().port().IsOpen() || m_client->stopAsked())
        return false;
    if (m_client->isInStep())
        return true;
    const clsMmc::Quiet quiet(*m_client);
    const obex::Patience patience(*m_client, patienceAfterSilence);
    m_client->getInStep();
    m_isLost = !m_client->isInStep();
    return !m_isLost;
}

std::optional<qint64> FileAccess::askForRoom(const PhonePath& folder)
{
    const clsMmc::Quiet quiet(*m_client);
    qint32 bytes = 0;
    const bool isKnown = isOnCard(folder) ? m_client->GetSpaceFreeMmc(bytes, progress())
                                          : m_client->GetSpaceFree(bytes, progress());
    return isKnown ? std::optional<qint64>(bytes) : std::nullopt;
}

bool FileAccess::enter(const PhonePath& folder)
{
    if (!m_client->DirAct().isEmpty() && PhonePath(m_client->DirAct()) == folder)
        return true;
    return m_client->CdRoot() && (folder.isRoot() || m_client->Cd(folder.forEngine(), false));
}

bool FileAccess::read(FolderListing& entries, const toolkit::Progress& progress)
{
    if (!m_client->Dir(entries, progress))
        return false;
    m_listsSizes = m_listsSizes || std::ranges::any_of(entries, &tObxDirEntry::size);
    return true;
}

std::optional<FolderListing> FileAccess::list(const PhonePath& folder)
{
    FolderListing entries;
    if (!enter(folder) || !read(entries, progress()))
        return std::nullopt;
    return entries;
}

std::optional<FolderListing> FileAccess::look(const PhonePath& folder)
{
    if (!canSend())
        return std::nullopt;
    const clsMmc::Quiet quiet(*m_client);
    FolderListing entries;
    if (!enter(folder) || !read(entries, {}))
        return std::nullopt;
    return entries;
}

std::optional<FolderListing> FileAccess::lookIfThere(const PhonePath& folder)
{
    if (!canSend())
        return std::nullopt;
    const clsMmc::Quiet quiet(*m_client);
    if (enter(folder))
        return look(folder);
    const bool wasRootEntered = !m_client->DirAct().isEmpty();
    return wasRootEntered && m_client->lastCode() == obex::NotFound ? std::optional(FolderListing())
                                                                    : std::nullopt;
}

Cause FileAccess::cause() const
{
    const int code = m_client->lastCode();
    if (!m_client->line().port().IsOpen())
        return Cause::LineGone;
    if (m_isLost)
        return Cause::NoAnswer;
    if (obex::isSuccess(code)) // the phone said yes, but does not show it
        return Cause::Mismatch;
    switch (code) {
    case obex::Timeout:
        return Cause::NoAnswer;
    case obex::Cancelled:
        return Cause::Interrupted;
    case obex::ReadFailed:
        return Cause::NotRead;
    case obex::WriteFailed:
    case obex::DeleteFailed:
        return Cause::NotSaved;
    case obex::NeverEnough:
        return Cause::PhoneRefused;
    default:
        return code > 0 ? Cause::PhoneRefused : Cause::NotPossible;
    }
}

bool FileAccess::showsWhole(const FolderListing& entries, const SentFile& file) const
{
    const tObxDirEntry* entry = findEntry(entries, file.name);
    if (!entry || !entry->isFile())
        return false;
    return entry->size == file.bytes || (entry->size == 0 && file.isConfirmed && !m_listsSizes);
}

void FileAccess::blame(FileOutcome& outcome) const
{
    outcome.cause = cause();
    outcome.code = m_client->lastCode();
}

FileObstacle obstacleAt(const PhonePath& path)
{
    return path.isRoot()      ? FileObstacle::IsRoot
           : path.isTelecom() ? FileObstacle::BelowTelecom
                              : FileObstacle::None;
}

const tObxDirEntry* findEntry(const FolderListing& entries, const QString& name)
{
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const tObxDirEntry& entry) {
        return entry.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == entries.end() ? nullptr : &*found;
}

bool isOnCard(const PhonePath& path)
{
    return !path.isRoot() && path.parts().first().compare(u"MMCard", Qt::CaseInsensitive) == 0;
}

bool isUncompared(const FileOutcome& file)
{
    return file.state == State::Unknown && file.isConfirmed && !file.mayHoldPart && !file.isOldLost;
}

Outcome sumOf(const std::vector<FileOutcome>& files)
{
    Outcome sum;
    sum.planned = static_cast<int>(files.size());
    int done = 0;
    int verified = 0;
    bool isOldLost = false;
    for (const FileOutcome& file : files) {
        done += file.state == State::Done;
        verified += file.isVerified;
        sum.confirmed += file.isConfirmed;
        sum.unknown += file.state == State::Unknown;
        isOldLost = isOldLost || file.isOldLost;
        if (sum.cause == Cause::None) {
            sum.cause = file.cause;
            sum.saveFault = file.saveFault;
        }
        if (sum.savedIn.isEmpty())
            sum.savedIn = file.savedIn;
    }
    sum.sent = std::max(done + sum.unknown, sum.confirmed);
    if (verified > 0)
        sum.verified = verified;
    if (done == sum.planned)
        sum.state = State::Done;
    else if (done > 0 || sum.unknown > 0 || isOldLost)
        sum.state = State::Unknown;
    return sum;
}

} // namespace kalmo::operations
