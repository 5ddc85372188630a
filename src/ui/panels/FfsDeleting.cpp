// The file system panel's deleting.

#include "obex/clsMmcOperation.h"
#include "operations/DeleteFiles.h"
#include "ui/forms/FormerStateWords.h"
#include "ui/panels/BatchDisplay.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FileBoxes.h"

#include <algorithm>
#include <utility>

namespace kalmo::ui {

using namespace Qt::StringLiterals;
using obex::clsMmc;
using obex::PhonePath;
using operations::Cause;
using operations::FileAccess;
using operations::FileObstacle;
using operations::FileOutcome;
using operations::FileToDelete;
using operations::State;
using toolkit::Icon;

namespace {

/// Names of what is not safely deleted.
class NotDeleted
{
public:
    /// `failure` is the code of a listing that failed, 0 without one.
    explicit NotDeleted(int failure) : m_failure(failure) {}

    void take(const FileToDelete& file, const FileOutcome& outcome);
    /// The one box at the end of work on so many files. The user's own wish is no failure.
    BatchReport report(const BatchResult& result, qsizetype files) const;

private:
    static bool isRequestFailed(const FileToDelete& file, const FileOutcome& outcome);

    bool m_hasFailed = false;          // a request
    bool m_isSilent = false;           // the phone
    int m_failure = 0;                 // code of the first one
    QStringList m_untouched;           // the phone refused or did not answer, or the user stopped
    QStringList m_unsaved;             // the record could not be written
    operations::SaveFault m_saveFault; // the reason for that
    QStringList m_open;                // the phone did not answer
    QStringList m_stillListed;         // the phone confirmed, and lists it
    QStringList m_notEmpty;            // folders
    QStringList m_telecom;             // below the folder of contacts and appointments
    QStringList m_gone;                // the phone no longer lists it
};

void NotDeleted::take(const FileToDelete& file, const FileOutcome& outcome)
{
    const QString name = file.path.name();
    const bool isLost = isRequestFailed(file, outcome);
    m_isSilent = m_isSilent || outcome.cause == Cause::NoAnswer || outcome.cause == Cause::LineGone;
    if (isLost && m_failure == 0)
        m_failure = outcome.code;
    m_hasFailed = m_hasFailed || isLost;
    const bool isAfterFailure = outcome.cause == Cause::NotSaved && m_hasFailed && outcome.saveFault.isNone();
    if (file.obstacle == FileObstacle::NotEmpty)
        m_notEmpty.append(name);
    else if (file.obstacle == FileObstacle::BelowTelecom)
        m_telecom.append(name);
    else if (file.obstacle == FileObstacle::NotThere)
        m_gone.append(name);
    else if (outcome.cause == Cause::Mismatch && outcome.isConfirmed)
        m_stillListed.append(name);
    else if (!isAfterFailure && (outcome.cause == Cause::NotSaved || outcome.cause == Cause::Mismatch))
        m_unsaved.append(name);
    else if (outcome.state == State::Unknown)
        m_open.append(name);
    else if (outcome.state != State::Done)
        m_untouched.append(name);
    if (m_saveFault.isNone())
        m_saveFault = outcome.saveFault;
}

bool NotDeleted::isRequestFailed(const FileToDelete& file, const FileOutcome& outcome)
{
    return file.obstacle == FileObstacle::FolderNotListed || outcome.cause == Cause::NoAnswer ||
           outcome.cause == Cause::LineGone || outcome.cause == Cause::PhoneRefused ||
           outcome.cause == Cause::NotPossible;
}

BatchReport NotDeleted::report(const BatchResult& result, qsizetype files) const
{
    BatchReport report;
    if (m_hasFailed && !result.isStopped) {
        if (m_failure != 0 || m_isSilent)
            report.failure = m_failure == 0 ? obex::Timeout : m_failure;
        if (files > 1)
            report.paragraphs += titled(u"Gelöscht:"_s, result.files + result.folders);
        if (files > 1 || report.failure == 0)
            report.paragraphs += titled(u"Nicht gelöscht:"_s, m_untouched);
    }
    report.paragraphs +=
        titled(u"Nicht gelöscht, weil der Inhalt nicht gesichert werden konnte:"_s, m_unsaved) +
        (m_saveFault.isNone() ? QStringList() : QStringList(reasonInWords(m_saveFault))) +
        titled(u"Es ist nicht bekannt, ob das noch im Telefon vorhanden ist:"_s, m_open) +
        titled(u"Das Telefon hat das Löschen bestätigt, enthält das aber immer noch:"_s, m_stillListed) +
        titled(u"Nicht gelöscht, weil der Ordner nicht leer ist:"_s, m_notEmpty) +
        titled(u"Nicht gelöscht, weil das Telefon in diesem Ordner Kontakte und Termine speichert:"_s,
               m_telecom) +
        titled(u"Nicht mehr im Telefon vorhanden:"_s, m_gone);
    return report;
}

/// The stages of a deletion on the display: everything is read for the record first.
class DeleteStages
{
public:
    DeleteStages(BatchDisplay& display, const std::vector<FileToDelete>& files) : m_display(display)
    {
        for (const FileToDelete& file : files) {
            m_count += file.obstacle == FileObstacle::None;
            m_bytes += file.entry ? file.entry->size : 0;
        }
    }

    void saving(const FileToDelete& file)
    {
        if (!std::exchange(m_isSaving, true))
            m_display.expect(m_count, m_bytes, u"Sichern"_s);
        m_display.next(file.entry->size);
    }
    void deleting()
    {
        if (!std::exchange(m_isDeleting, true))
            m_display.expect(m_count, 0);
        m_display.next();
    }

private:
    BatchDisplay& m_display;
    qsizetype m_count = 0;
    qint64 m_bytes = 0;
    bool m_isSaving = false;
    bool m_isDeleting = false;
};

} // namespace

bool deleteEntries(const std::shared_ptr<clsMmc>& mmc, const toolkit::Progress& progress, const PhonePath& in,
                   const QStringList& names)
{
    BatchDisplay display(progress, mmc->line().context().clock);
    FileAccess access(mmc, u"Löschen"_s, display.progress());
    if (!access.mayBegin())
        return false;
    std::vector<PhonePath> paths;
    for (const QString& name : names)
        paths.push_back(in.below(name));
    std::optional<clsMmc::Quiet> quiet(*mmc); // one box at the end reports all
    std::vector<FileToDelete> files = operations::planDelete(paths);
    operations::lookBeforeDeleting(access, files);
    const bool isUnlisted = std::ranges::any_of(
        files, [](const FileToDelete& file) { return file.obstacle == FileObstacle::FolderNotListed; });
    NotDeleted notDeleted(isUnlisted && !obex::isSuccess(mmc->lastCode()) ? mmc->lastCode() : 0);
    BatchResult deleted{.verb = u"gelöscht"_s};
    bool isAllDone = true;
    const auto finished = [&](const FileToDelete& file, const FileOutcome& outcome) {
        const QString name = file.path.name();
        if (outcome.state == State::Done)
            (file.entry && file.entry->isFile() ? deleted.files : deleted.folders).append(name);
        deleted.unknown += outcome.state == State::Unknown;
        notDeleted.take(file, outcome);
        isAllDone = isAllDone && (outcome.state == State::Done || file.obstacle == FileObstacle::NotThere);
    };
    const auto mayLose = [&](const QStringList& unreadable) {
        const QStringList text =
            titled(u"Das Telefon gibt den Inhalt nicht heraus, eine Sicherung ist nicht möglich:"_s,
                   unreadable) +
            QStringList(u"Trotzdem löschen?"_s);
        return ask(*mmc, text.join(u"\n\n"_s));
    };
    DeleteStages stages(display, files);
    const ReceivedBytes received(*mmc, display);
    const auto saving = [&](const FileToDelete& file) { stages.saving(file); };
    const auto deleting = [&](const FileToDelete&) { stages.deleting(); };
    operations::applyDelete(
        access, files, {.stopsAtFailure = true},
        {.saving = saving, .deleting = deleting, .finished = finished, .mayLose = mayLose});
    quiet.reset();
    deleted.isStopped = access.isStopped();
    deleted.notDone = names.size() - deleted.files.size() - deleted.folders.size() - deleted.unknown;
    tellOpenRecord(*mmc, access);
    tellReport(*mmc, notDeleted.report(deleted, names.size()));
    progress.status(sentenceOf(deleted));
    return isAllDone;
}

} // namespace kalmo::ui
