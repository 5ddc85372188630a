#include "cli/WriteList.h"

#include "app/Files.h"
#include "cli/EntryWarnings.h"
#include "cli/FindPhone.h"
#include "cli/ReadList.h"
#include "cli/SavedListWords.h"
#include "cli/Stop.h"
#include "cli/StoreWords.h"
#include "cli/WriteReport.h"
#include "link/PhoneModels.h"
#include "operations/EntryLines.h"
#include "phonedata/BackupFiles.h"
#include "phonedata/StoreSafety.h"

namespace kalmo::cli {

using operations::Entries;
using operations::sendable;
using phonedata::ClassicEntry;
using phonedata::ListDiff;
using phonedata::Store;

namespace {

const QString disturbed =
    u"the line was disturbed in both readings, so what the phone holds is not safely known"_s;

/// One run of a command that writes a list.
class ListWriter
{
public:
    ListWriter(Job& job, Store store) : m_job(job), m_store(store), m_words(wordsOf(store)) {}

    ExitStatus run();

private:
    bool readFile();
    void foresee();
    int countAsInFile(const Entries& held) const;
    ExitStatus replace(const ListDiff& diff);
    bool backUp();
    bool wantsDoubtful();
    bool agrees(const ListDiff& diff);
    bool write();
    ExitStatus tellUnchanged();
    ExitStatus tellFailure();
    ExitStatus verify();
    ExitStatus finish(ExitStatus status, std::optional<int> written, std::optional<int> verified,
                      const QString& text);
    ExitStatus fail(ExitStatus status, const QString& text)
    {
        m_job.out.error(text);
        return status;
    }

    Job& m_job;
    Store m_store;
    const StoreWords& m_words;
    Entries m_fromFile;
    Entries m_wanted; // as the phone will hold them
    ListRead m_held;
    QString m_warnings;
    QString m_backup;
};

ExitStatus ListWriter::run()
{
    const bool dryRun = m_job.invocation.has(u"--dry-run"_s);
    if (!readFile())
        return ExitWrongUse;
    if (!dryRun && !m_job.questions.canBeAnswered()) {
        m_job.questions.tellUnanswered(u"Replace the %1 in the phone?"_s.arg(m_words.name));
        return ExitRefused;
    }
    const QStringView needs = u"a handset with a classic phonebook (families 1 to 4) for such entries";
    if (const ExitStatus found = findPhone(m_job, link::isClassic, needs); found != ExitDone)
        return found;
    if (const ExitStatus read = readList(m_job, m_store, m_held); read != ExitDone) {
        m_job.out.note(u"Nothing was changed in the phone.\n"_s);
        return read;
    }
    foresee();
    const ListDiff diff = phonedata::diffLists(m_held.entries, m_wanted);
    if (dryRun) {
        m_job.out.note(m_warnings);
        m_job.out.show(diffJson(diff), diffText(diff, m_held.entries.size(), m_store));
        return m_held.isDoubtful ? fail(ExitFailed, disturbed + u'.') : ExitDone;
    }
    return replace(diff);
}

/// Finds out what the phone will hold, and warns of what that changes.
void ListWriter::foresee()
{
    const int phoneType = m_job.phoneType();
    m_wanted = m_fromFile;
    if (m_held.entries == m_fromFile && !m_held.isDoubtful)
        return; // nothing will be written that could change it
    for (ClassicEntry& entry : m_wanted)
        entry =
            phonedata::asHeld(sendable(entry), m_store, phoneType, m_job.memory.sounds, m_job.context.log);
    m_warnings = warningLines(m_fromFile, m_wanted, m_store, phoneType, m_job.memory.sounds);
}

/// How many entries of the file these are exactly.
int ListWriter::countAsInFile(const Entries& held) const
{
    const ListDiff diff = phonedata::diffLists(held, m_fromFile);
    return static_cast<int>(m_fromFile.size() - diff.add.size() - diff.change.size());
}

bool ListWriter::readFile()
{
    const QString path = m_job.invocation.arguments.first();
    const operations::SavedKind kind = operations::savedKind(m_store);
    operations::SavedListFault fault;
    const auto list = operations::readSavedList(path, kind, {}, fault);
    if (!list) {
        m_job.out.error(inWords(fault, path, kind) + u'.');
        return false;
    }
    m_fromFile = list->entries;
    return true;
}

ExitStatus ListWriter::replace(const ListDiff& diff)
{
    if (m_held.entries == m_wanted && !m_held.isDoubtful) {
        m_job.out.note(m_warnings);
        return finish(
            ExitDone, 0, countAsInFile(m_held.entries),
            m_held.entries == m_fromFile
                ? u"The phone already holds exactly these entries; nothing was written.\n"_s
                : u"The phone already holds these entries as far as it can; nothing was written.\n"_s);
    }
    if (m_held.isDoubtful && !wantsDoubtful())
        return fail(ExitFailed, disturbed + u".\nNothing was changed in it."_s);
    if (!backUp())
        return ExitFailed;
    m_job.out.note(diffText(diff, m_held.entries.size(), m_store));
    if (!agrees(diff) || m_job.stop.Checked())
        return tellUnchanged();
    return write() ? verify() : tellFailure();
}

ExitStatus ListWriter::tellUnchanged()
{
    QString text = u"nothing was changed in the phone."_s;
    if (m_job.stop.Checked())
        text.prepend(u"interrupted; "_s);
    if (!m_backup.isEmpty())
        text += u"\nWhat it holds is saved in %1."_s.arg(m_backup);
    m_job.out.error(text);
    return finish(ExitRefused, 0, std::nullopt, {});
}

bool ListWriter::backUp()
{
    if (m_held.entries.empty())
        return true;
    const operations::SavedList held{.kind = operations::savedKind(m_store), .entries = m_held.entries};
    QStringList paths{phonedata::phoneCopyPath(m_job.context, phonedata::backupExtension(m_store))};
    if (!operations::bringsBack(paths.first(), held))
        paths.append(phonedata::phoneCopyPath(
            m_job.context, u".json"_s)); // the window reads the other one, as far as it goes
    for (const QString& path : paths) {
        QString reason;
        if (!app::writeWholeFile(path, operations::savedListBytes(path, held), &reason)) {
            m_job.out.error(u"what the phone holds could not be saved in %1: %2.\n"
                            u"Nothing was changed in the phone."_s.arg(path, reason));
            return false;
        }
    }
    m_backup = paths.last();
    m_job.out.note(u"What the phone holds is saved in %1.\n"_s.arg(m_backup));
    return true;
}

/// Only a person may say so: a backup that lacks an entry is none.
bool ListWriter::wantsDoubtful()
{
    return m_job.questions.someoneIsThere() &&
           m_job.questions.confirm(
               u"The line was disturbed in both readings, so the backup may lack an entry. "
               u"Write all the same?"_s);
}

bool ListWriter::agrees(const ListDiff& diff)
{
    Questions& questions = m_job.questions;
    // Whoever is asked has to see what about.
    if (questions.someoneIsThere())
        m_job.out.prompt(m_warnings);
    else
        m_job.out.note(m_warnings);
    if (!m_warnings.isEmpty() &&
        !questions.confirm(
            u"The phone may change an entry that it can't hold, or refuse it, and then lacks those behind "
            u"it too. Write all the same?"_s))
        return false;
    return questions.confirm(u"Write %1 to the phone (%2 new, %3 changed, %4 removed)?"_s.arg(
        entryCount(m_wanted.size()), QString::number(diff.add.size()), QString::number(diff.change.size()),
        QString::number(diff.remove.size())));
}

bool ListWriter::write()
{
    const auto list = phonedata::makeRows(m_store);
    for (const ClassicEntry& entry : m_fromFile)
        list->add(phonedata::toRow(sendable(entry)));
    m_job.progress.phase(u"Erasing the %1, which can take minutes"_s.arg(m_words.name),
                         u"Writing the %1"_s.arg(m_words.name));
    const StoreOpenScope open;
    const bool done = phonedata::writeStore(
        {m_job.line, m_job.memory, *list, nullptr, {.bar = &m_job.progress, .cancel = &m_job.stop}}, m_store);
    m_job.progress.clear();
    // A store that didn't close in the end holds its entries all the same; reading back will tell.
    const bool isWhole = phonedata::certaintyOf(m_job.memory, m_store) != phonedata::Certainty::Unknown &&
                         phonedata::entriesInPhone(m_job.memory, m_store) == list->count();
    return done || (isWhole && list->count() > 0 && m_job.line.port().IsOpen());
}

ExitStatus ListWriter::tellFailure()
{
    const bool isKnown = phonedata::certaintyOf(m_job.memory, m_store) != phonedata::Certainty::Unknown;
    const int written = phonedata::entriesInPhone(m_job.memory, m_store);
    QString cause = u"the phone did not take them"_s;
    if (m_job.stop.Checked())
        cause = u"interrupted"_s;
    else if (!m_job.line.port().IsOpen())
        cause = u"%1 is gone"_s.arg(m_job.portName());
    const QString text = failureText({.invocation = m_job.invocation,
                                      .words = m_words,
                                      .cause = cause,
                                      .held = isKnown ? std::optional(written) : std::nullopt,
                                      .wanted = static_cast<int>(m_wanted.size()),
                                      .backup = m_backup});
    m_job.out.error(text);
    return finish(m_job.stop.Checked() ? ExitRefused : ExitFailed,
                  isKnown ? std::optional(written) : std::nullopt, std::nullopt, {});
}

ExitStatus ListWriter::verify()
{
    const int written = static_cast<int>(m_wanted.size());
    ListRead now;
    if (const ExitStatus status = readList(m_job, m_store, now); status != ExitDone) {
        m_job.out.error(u"%1 written, but not read back to be compared.\n%2"_s.arg(
            entryCount(m_wanted.size()), backupHint(m_job.invocation, m_words, m_backup)));
        return finish(status, written, std::nullopt, {});
    }
    const ListDiff diff = phonedata::diffLists(now.entries, m_wanted);
    const int verified = countAsInFile(now.entries);
    if (diff.isEmpty())
        return finish(ExitDone, written, verified,
                      verified == written
                          ? u"%1 written, read back and found right.\n"_s.arg(entryCount(m_wanted.size()))
                          : u"%1 written and read back. Not as in the file, as was warned: %2.\n"_s.arg(
                                entryCount(m_wanted.size()), entryCount(written - verified)));
    m_job.out.error(u"the phone does not hold what was written. This differs:\n"_s +
                    mismatchText(diff, m_store) + backupHint(m_job.invocation, m_words, m_backup));
    return finish(ExitFailed, written, verified, {});
}

ExitStatus ListWriter::finish(ExitStatus status, std::optional<int> written, std::optional<int> verified,
                              const QString& text)
{
    m_job.out.show(resultJson(written, verified, m_backup), text);
    return status;
}

} // namespace

ExitStatus runWrite(Job& job, Store store)
{
    return ListWriter(job, store).run();
}

} // namespace kalmo::cli
