// Operations on single files and folders, and the phone's capacities.

#include "link/PhoneModels.h"
#include "obex/clsMmcOperation.h"
#include "obex/ResponseFrame.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using toolkit::Progress;

namespace {

/// The questions for a capacity, by their place in the cache.
enum SpaceQuery { PhoneTotal, PhoneFree, CardTotal, CardFree };

struct SpaceQueryRow
{
    Memory memory;
    Space space;
    QStringView name;
    QStringView subject; // of the panel's texts
    bool raisesBusy;
};

constexpr std::array<SpaceQueryRow, 4> spaceQueries = {{
    {Memory::Phone, Space::Total, u"GetSpaceTotal", u"Kapazität", false},
    {Memory::Phone, Space::Free, u"GetSpaceFree", u"Freier Speicherplatz", true},
    {Memory::Card, Space::Total, u"GetSpaceTotalMmc", u"Kapazität MMC", true},
    {Memory::Card, Space::Free, u"GetSpaceFreeMmc", u"Freier Speicherplatz MMC", true},
}};

/// A path for a rename frame: from the root, with "/".
QByteArray wirePath(QString path)
{
    path.replace(u"\\\\"_s, u"\\"_s);
    return renamePath(withoutRoot(path).replace(u'\\', u'/'));
}

} // namespace

/// The name in a Name header: some families want the whole path.
QString clsMmc::nameForPhone(const QString& name) const
{
    if (!link::usesAbsoluteNames(m_context.sy.PhoneType))
        return name;
    return QString(m_dirAct).replace(rootPath(), u"/"_s) + u'/' + name;
}

bool clsMmc::Del(const QString& name, const Progress& progress, int* reCode, bool silent, bool force)
{
    if (reCode)
        *reCode = ChannelNotOpen;
    const Operation operation(*this, u"Del"_s, progress);
    if (!operation.mayBegin())
        return false;
    if (reCode)
        *reCode = Cancelled;
    if (!isFolderKnown())
        return false;
    const QString sent = nameForPhone(name);
    if (force) {
        log(u"PostDel"_s, sent);
        const bool allowed = SetAttrib(sent, u"RWD"_s, u"RWD"_s, true);
        log(u"PostDel"_s, u"SetAttrib="_s + (allowed ? u"True"_s : u"False"_s));
    }
    m_progress.status(u"Datei / Ordner wird gelöscht... ca. 2 Sekunden pro Datei"_s);
    const Busy busy(*this);
    QByteArray payload;
    const int code = request(deleteFrame(sent), payload);
    if (reCode)
        *reCode = code;
    m_progress.status(isSuccess(code) ? u"Datei / Ordner gelöscht."_s : u"Datei / Ordner nicht gelöscht."_s);
    if (!isSuccess(code) && !silent)
        ErrMsg(code);
    return isSuccess(code);
}

bool clsMmc::Rename(const QString& oldPath, const QString& newPath, const Progress& progress)
{
    const Operation operation(*this, u"Rename"_s, progress);
    if (!operation.mayBegin())
        return false;
    const Busy busy(*this);
    const QByteArray from = wirePath(oldPath);
    const QByteArray to = wirePath(newPath);
    QByteArray payload;
    const bool fits = std::max(from.size(), to.size()) <= mostPathBytes;
    const int code = fits ? request(renameFrame(from, to), payload) : noted(RequestTooLong);
    if (code == Success) {
        m_progress.status(u"Datei / Ordner umbennant."_s);
        return true;
    }
    m_progress.status(u"Datei / Ordner nicht umbennant."_s);
    ErrMsg(code);
    return false;
}

bool clsMmc::SetAttrib(const QString& name, const QString& group, const QString& user, bool silent)
{
    const Operation operation(*this, u"SetAttrib"_s);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    const Busy busy(*this);
    const QString text = u"\"%1\"\"%2\""_s.arg(user, group);
    QByteArray payload;
    const int code = request(setAttribFrame(name, text.toLatin1()), payload);
    if (!isSuccess(code) && !silent)
        ErrMsg(code);
    return isSuccess(code);
}

bool clsMmc::SetPermissionReadOnly(const QString& name)
{
    const bool done = SetAttrib(name, u"R"_s, u"RWD"_s, false);
    log(u"SetPermissionReadOnly ("_s, name + u")="_s + (done ? u"True"_s : u"False"_s));
    return done;
}

bool clsMmc::SetPermissionRWD(const QString& name)
{
    const bool done = SetAttrib(name, u"RWD"_s, u"RWD"_s, false);
    // Kept on purpose: the log has the name of the other function here.
    log(u"SetPermissionReadOnly ("_s, name + u")="_s + (done ? u"True"_s : u"False"_s));
    return done;
}

bool clsMmc::getSpace(int query, qint32& bytes, const Progress& progress, bool useCache)
{
    const SpaceQueryRow& row = spaceQueries[query];
    const QString name = row.name.toString();
    const QString subject = row.subject.toString();
    bytes = 0;
    const Operation operation(*this, name, progress);
    if (!operation.mayBegin())
        return false;
    qint32& cached = m_space[query];
    if (useCache && cached != 0) {
        bytes = cached;
        log(name, name + u": UseCache="_s + QString::number(cached));
        return true;
    }
    std::optional<Busy> busy;
    if (row.raisesBusy)
        busy.emplace(*this);
    m_progress.status(subject + u" wird ermittelt..."_s);
    QByteArray payload;
    const int code = get(spaceFrame(row.memory, row.space), payload);
    if (isSuccess(code)) {
        cached = readSpaceAnswer(payload);
        bytes = cached;
        m_progress.status(subject + u" ermittelt."_s);
    } else {
        ErrMsg(code);
        m_progress.status(subject + u" nicht ermittelt."_s);
    }
    return isSuccess(code);
}

bool clsMmc::GetSpaceTotal(qint32& bytes, const Progress& progress, bool useCache)
{
    return getSpace(PhoneTotal, bytes, progress, useCache);
}

bool clsMmc::GetSpaceFree(qint32& bytes, const Progress& progress, bool useCache)
{
    return getSpace(PhoneFree, bytes, progress, useCache);
}

bool clsMmc::GetSpaceTotalMmc(qint32& bytes, const Progress& progress, bool useCache)
{
    return getSpace(CardTotal, bytes, progress, useCache);
}

bool clsMmc::GetSpaceFreeMmc(qint32& bytes, const Progress& progress, bool useCache)
{
    return getSpace(CardFree, bytes, progress, useCache);
}

const tObxDirEntry* clsMmc::fileInActDir(const QString& name) const
{
    const auto found = std::find_if(m_files.begin(), m_files.end(), [&](const tObxDirEntry& file) {
        return file.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == m_files.end() ? nullptr : &*found;
}

bool clsMmc::IsFileInActDir(const QString& name) const
{
    return fileInActDir(name) != nullptr;
}

bool clsMmc::GetFileSizeInActDir(const QString& name, qint32& size) const
{
    const tObxDirEntry* file = fileInActDir(name);
    if (file)
        size = file->size;
    return file != nullptr;
}

bool clsMmc::GetTimeStampFromFileInActDir(const QString& name, QDateTime& moment) const
{
    const tObxDirEntry* file = fileInActDir(name);
    if (file)
        moment = QDateTime(file->modified.date(), file->modified.time());
    return file != nullptr;
}

} // namespace kalmo::obex
