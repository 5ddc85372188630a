// The file system panel's deleting.

#include "operations/DeleteFiles.h"
#include "ui/panels/BatchDisplay.h"
#include "ui/panels/FfsTransfers.h"
#include "ui/panels/FileBoxes.h"

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
    void take(const FileToDelete& file, const FileOutcome& outcome);
    QString text() const;

private:
    QStringList m_unsaved;     // the record could not be written
    QString m_reason;          // the system's words for that
    QStringList m_open;        // the phone did not answer
    QStringList m_stillListed; // the phone confirmed, and lists it
    QStringList m_notEmpty;    // folders
    QStringList m_telecom;     // below the folder of contacts and appointments
    QStringList m_gone;        // the phone no longer lists it
};

void NotDeleted::take(const FileToDelete& file, const FileOutcome& outcome)
{
    const QString name = file.path.name();
    if (file.obstacle == FileObstacle::NotEmpty)
        m_notEmpty.append(name);
    else if (file.obstacle == FileObstacle::BelowTelecom)
        m_telecom.append(name);
    else if (file.obstacle == FileObstacle::NotThere)
        m_gone.append(name);
    else if (outcome.cause == Cause::Mismatch && outcome.isConfirmed)
        m_stillListed.append(name);
    else if (outcome.cause == Cause::NotSaved || outcome.cause == Cause::Mismatch)
        m_unsaved.append(name);
    else if (outcome.state == State::Unknown)
        m_open.append(name);
    if (m_reason.isEmpty())
        m_reason = outcome.reason;
}

QString NotDeleted::text() const
{
    const QStringList parts =
        titled(u"Nicht gelöscht, weil der Inhalt nicht gesichert werden konnte:"_s, m_unsaved) +
        (m_reason.isEmpty() ? QStringList() : QStringList(m_reason)) +
        titled(u"Das Telefon hat nicht geantwortet. Es ist nicht bekannt, ob das noch vorhanden ist:"_s,
               m_open) +
        titled(u"Das Telefon hat das Löschen bestätigt, enthält das aber immer noch:"_s, m_stillListed) +
        titled(u"Nicht gelöscht, weil der Ordner nicht leer ist:"_s, m_notEmpty) +
        titled(u"Nicht gelöscht, weil das Telefon in diesem Ordner Kontakte und Termine speichert:"_s,
               m_telecom) +
        titled(u"Nicht mehr im Telefon vorhanden:"_s, m_gone);
    return parts.join(u"\n\n"_s);
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
    std::vector<FileToDelete> files = operations::planDelete(paths);
    operations::lookBeforeDeleting(access, files);
    NotDeleted notDeleted;
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
        return ask(*mmc,
                   u"Das Telefon gibt den Inhalt nicht heraus, eine Sicherung ist nicht möglich:\n%1\n\n"
                   u"Trotzdem löschen?"_s.arg(someOf(unreadable)));
    };
    DeleteStages stages(display, files);
    const auto saving = [&](const FileToDelete& file) { stages.saving(file); };
    const auto deleting = [&](const FileToDelete&) { stages.deleting(); };
    operations::applyDelete(
        access, files, {.stopsAtFailure = true},
        {.saving = saving, .deleting = deleting, .finished = finished, .mayLose = mayLose});
    tellOpenRecord(*mmc, access);
    if (const QString text = notDeleted.text(); !text.isEmpty())
        tell(*mmc, text, Icon::Exclamation);
    deleted.leftOut = names.size() - deleted.files.size() - deleted.folders.size() - deleted.unknown;
    progress.status(sentenceOf(deleted));
    return isAllDone;
}

} // namespace kalmo::ui
