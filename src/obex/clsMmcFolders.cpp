// Listing and moving about.

#include "app/CodePage.h"
#include "app/Utf8Small.h"
#include "app/Version.h"
#include "obex/clsMmcOperation.h"
#include "obex/FolderRows.h"

#include <algorithm>

namespace kalmo::obex {

using namespace Qt::StringLiterals;
using toolkit::ListRows;
using toolkit::Progress;

namespace {

// A limit for a phone whose folders contain themselves.
constexpr int deepestFolder = 32;
constexpr int mostFolders = 1000;
constexpr int letterIsMissing = 5; // for the log, if a text ends in the middle of a letter

/// Returns true if the name leads into a folder of the current one. "", "\\" and names with a "\\" elsewhere
/// do not.
bool isOnePart(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'\\');
}

QStringList partsOf(const QString& path)
{
    return path.split(u'\\', Qt::SkipEmptyParts);
}

} // namespace

/// State of a walk through folders. Its sums are stored at its end.
struct clsMmc::FolderWalk
{
    qint64 totalSize = 0;
    int fileCount = 0;
    int folders = 0;
    bool ended = false; // the walk has ended: nothing more is read
};

QString clsMmc::decodeListing(const QString& raw)
{
    bool endsBroken = false;
    const QString text = app::UFT8Dec(raw, &endsBroken);
    noteDecoding(endsBroken);
    return text;
}

void clsMmc::noteDecoding(bool endsBroken)
{
    log(u"UFT8Dec: Enter"_s, {});
    if (!endsBroken) {
        log(u"UFT8Dec: ExitOK"_s, {});
        return;
    }
    m_line.show({.text = u"Bei der UTF-8 Dekodierung ist ein Fehler aufgetreten. Ihre Listen werden daher "
                         u"fehlerhafte Sonderzeichen enthalten. Bitte wenden Sie sich an den "
                         u"Programmautor."_s,
                 .title = app::productName(),
                 .english = u"could not decode the whole text: it ends in the middle of a letter."_s});
    log(u"UFT8Dec: ExitError"_s, u"ErrNr=%1"_s.arg(letterIsMissing));
}

bool clsMmc::Dir(QList<tObxDirEntry>& entries, const Progress& progress, ListRows* list,
                 const QStringList* filter, QString* decoded)
{
    const Operation operation(*this, u"Dir"_s, progress);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    log(u"Enter"_s, u"Function=Dir ("_s + m_dirAct + u")="_s);
    entries.clear();
    m_files.clear();
    if (list)
        list->clear();
    m_progress.status(u"Verzeichnis wird ausgelesen..."_s);
    Busy busy(*this);
    QByteArray bytes;
    const int code = get(folderListingFrame(), bytes);
    if (isSuccess(code)) {
        const QString raw = app::fromCp1252(bytes);
        if (m_context.log.isOn()) {
            log(u"RawData"_s, u"DirListing="_s + m_dirAct + u" Begin >"_s + raw + u"DirListing="_s +
                                  m_dirAct + u" End <"_s);
        }
        const QString listing = decodeListing(raw);
        entries = parseFolderListing(listing, m_dirAct, filter);
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(m_files),
                     [](const tObxDirEntry& entry) { return entry.isFile(); });
        if (decoded)
            *decoded = listing;
        if (list)
            DirInLvw(entries, *list);
        m_progress.status(u"Verzeichnis ausgelesen."_s);
    } else {
        m_progress.status(u"Verzeichnis nicht ausgelesen."_s);
        ErrMsg(code);
    }
    m_line.pause(shortPause);
    busy.off();
    log(u"Exit"_s, u"Function=Dir ("_s + m_dirAct + u")="_s + QString::number(code));
    return isSuccess(code);
}

/// Goes down part by part. A part is added to the path only after the phone has changed to it.
bool clsMmc::changeFolder(const QString& path, bool allowCreation)
{
    for (const QString& part : partsOf(path)) {
        QByteArray payload;
        const int code = request(enterFolderFrame(part, allowCreation), payload);
        if (!isSuccess(code)) {
            ErrMsg(code);
            return false;
        }
        setDirAct(pathIn(m_dirAct, part));
    }
    return true;
}

bool clsMmc::Cd(const QString& path, bool allowCreation)
{
    const Operation operation(*this, u"Cd"_s);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    log(u"Enter"_s, u"Cd ("_s + path + u')');
    Busy busy(*this);
    const bool arrived = changeFolder(withoutRoot(path), allowCreation);
    if (arrived)
        m_line.pause(shortPause);
    busy.off();
    log(u"Exit"_s, u"Cd ("_s + path + u")="_s + m_dirAct);
    return arrived;
}

bool clsMmc::Md(const QString& path)
{
    const Operation operation(*this, u"Md"_s);
    if (!operation.mayBegin() || !isFolderKnown())
        return false;
    log(u"Enter"_s, u"Md ("_s + path + u')');
    const Busy busy(*this);
    return changeFolder(path, true);
}

bool clsMmc::CdRoot()
{
    const Operation operation(*this, u"CdRoot"_s);
    if (!operation.mayBegin())
        return false;
    setDirAct({});
    const Busy busy(*this);
    QByteArray payload;
    const int code = request(rootFrame(), payload);
    if (code == Success)
        setDirAct(rootPath());
    else
        ErrMsg(code);
    m_line.pause(shortPause);
    return code == Success;
}

bool clsMmc::CdNull()
{
    const Operation operation(*this, u"CdNull"_s);
    if (!operation.mayBegin())
        return false;
    setDirAct({});
    const Busy busy(*this);
    QByteArray payload;
    const int code = request(oneLevelUpFrame(), payload);
    if (code != Success)
        ErrMsg(code);
    return code == Success;
}

bool clsMmc::CdUp()
{
    const Operation operation(*this, u"CdUp"_s);
    if (!operation.mayBegin())
        return false;
    if (m_dirAct == rootPath()) {
        log(u"Exit"_s, u"CdUp=OK, already in RootDir"_s);
        return true;
    }
    const Busy busy(*this);
    const QString parent =
        withoutRoot(m_dirAct.first(std::max<qsizetype>(m_dirAct.lastIndexOf(u'\\') + 1, 0)));
    const bool arrived = CdRoot() && (parent.isEmpty() || Cd(parent, true));
    log(u"Exit"_s, u"CdUp=Complete"_s);
    return arrived;
}

bool clsMmc::cdInto(const QStringList& parts)
{
    return std::all_of(parts.begin(), parts.end(), [this](const QString& part) { return Cd(part, false); });
}

bool clsMmc::CDluidPB()
{
    return cdInto({u"telecom"_s, u"pb"_s, u"luid"_s});
}

bool clsMmc::CDluidCAL()
{
    return cdInto({u"telecom"_s, u"cal"_s, u"luid"_s});
}

bool clsMmc::CDluidNT()
{
    return cdInto({u"telecom"_s, u"nt"_s, u"luid"_s});
}

bool clsMmc::DirActRestore()
{
    const Operation operation(*this, u"DirActRestore"_s);
    return operation.mayBegin() && CdRoot() && Cd(m_dirActSaved, true);
}

bool clsMmc::GetFolderInfosRec(const QString& folder, qint64& totalSize, int& fileCount,
                               const Progress& progress, const QString& parent)
{
    const Operation operation(*this, u"GetFolderInfosRec"_s, progress);
    if (!operation.mayBegin())
        return false;
    FolderWalk walk;
    const bool isBack = walkFolder(folder, walk, parent, 0);
    totalSize += walk.totalSize;
    fileCount += walk.fileCount;
    return isBack;
}

bool clsMmc::walkFolder(const QString& folder, FolderWalk& walk, const QString& parent, int depth)
{
    if (depth > deepestFolder || ++walk.folders > mostFolders) {
        log(u"Warning:"_s, u"GetFolderInfosRec stops at "_s + pathIn(parent, folder));
        walk.ended = true;
    } else if (Cd(folder, true)) {
        m_progress.status(u"Ordner "_s + folder + u" wird untersucht..."_s);
        QList<tObxDirEntry> entries;
        Dir(entries, m_progress);
        for (const tObxDirEntry& entry : entries) {
            if (entry.isFile()) {
                walk.totalSize += entry.size;
                ++walk.fileCount;
            }
        }
        for (const tObxDirEntry& entry : entries) {
            walk.ended = walk.ended || m_progress.cancelled() || m_stopAsked || !m_inStep;
            if (walk.ended)
                break;
            if (!entry.isFile() && isOnePart(entry.name))
                walk.ended = !walkFolder(entry.name, walk, pathIn(parent, folder), depth + 1);
        }
    }
    if (walk.ended && depth > 0) // the outermost goes all the way back
        return false;
    return getInStep() && CdRoot() && Cd(withoutRoot(parent), true);
}

} // namespace kalmo::obex
