// Single contacts of a vCard phonebook: added, changed, deleted.

#include "cli/Commands.h"
#include "cli/ContactBook.h"
#include "cli/ContactWords.h"
#include "cli/DataWork.h"
#include "cli/FindPhone.h"
#include "cli/SavedListWords.h"
#include "cli/StoreWords.h"
#include "cli/Tables.h"
#include "operations/ContactFields.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace kalmo::cli {

using operations::contactName;
using operations::Contacts;
using operations::SavedKind;
using phonedata::tVcfEntry;
using Report = phonedata::VcardStore::Report;

namespace {

/// One run of a command that changes contacts: read all, save them, ask, change, and say what came of it.
class ContactChange
{
public:
    /// `verb` is what happens to a contact, "written" for example: the key of their number in JSON too.
    ContactChange(Job& job, const QString& verb) : m_job(job), m_verb(verb) {}

    /// Whether the change can begin; anything but ExitDone has been told.
    using Check = std::function<ExitStatus(ContactBook& book)>;
    /// Makes the change.
    using Change = std::function<bool(ContactBook& book, const toolkit::Progress& progress, Report& report)>;

    /// `count` is the number of contacts that are to be changed.
    ExitStatus run(size_t count, const Check& check, const Change& change);

private:
    ExitStatus tell(bool done, size_t count, const Report& report);

    Job& m_job;
    QString m_verb;
    QString m_backup;
};

ExitStatus ContactChange::run(size_t count, const Check& check, const Change& change)
{
    if (const ExitStatus found = findPhone(m_job); found != ExitDone)
        return found;
    return withClient(m_job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        ContactBook book(m_job, client);
        if (const ExitStatus read = book.read(); read != ExitDone)
            return read;
        if (!book.isWhole()) {
            m_job.out.error(book.mismatch() + u", in the second reading too.\n"
                                              u"Nothing was changed in the phone."_s);
            return ExitFailed;
        }
        if (const ExitStatus checked = check(book); checked != ExitDone)
            return checked;
        if (!book.backUp(m_backup))
            return ExitFailed;
        m_job.progress.phase(u"Changing the phonebook"_s);
        Report report;
        const bool done = change(book, {.bar = &m_job.progress, .cancel = &m_job.stop}, report);
        m_job.progress.clear();
        return tell(done, count, report);
    });
}

ExitStatus ContactChange::tell(bool done, size_t count, const Report& report)
{
    const auto changed = static_cast<size_t>(report.luids.size());
    QJsonArray luids;
    QStringList known;
    for (const QString& luid : report.luids) {
        const bool isKnown = !phonedata::isNoValidLuid(luid);
        luids.append(isKnown ? QJsonValue(luid) : QJsonValue());
        if (isKnown)
            known.append(printable(luid));
    }
    const QString which = known.isEmpty() ? QString() : u": "_s + known.join(u' ');
    m_job.out.show(QJsonObject{{m_verb, static_cast<qint64>(changed)},
                               {u"luids"_s, luids},
                               {u"backup"_s, m_backup.isEmpty() ? QJsonValue() : QJsonValue(m_backup)}},
                   changed == 0 ? QString() : u"%1 %2%3\n"_s.arg(entryCount(changed), m_verb, which));
    if (done && changed == count)
        return ExitDone;
    QString text = u"%1 of %2 %3"_s.arg(QString::number(changed), entryCount(count), m_verb);
    if (report.unconfirmed)
        text += u"; of one more it is not known, so read the phonebook before you go on"_s;
    else if (changed == count)
        text += u"; what the phone holds now it has not said, so read the phonebook before you go on"_s;
    if (!m_backup.isEmpty())
        text += u".\nWhat the phone held before is in %1"_s.arg(m_backup);
    m_job.out.error(text + u'.');
    return brokenOff(m_job);
}

/// Reads the file that a command names, but for contacts that hold nothing. False has been told.
bool readFile(Job& job, const QString& path, Contacts& contacts)
{
    operations::SavedListFault fault;
    const auto list = operations::readSavedList(path, SavedKind::Contacts, {}, fault);
    if (!list || list->contacts.empty()) {
        if (list)
            fault.kind = operations::FileFault::NothingInIt;
        job.out.error(inWords(fault, path, SavedKind::Contacts) + u'.');
        return false;
    }
    contacts = list->contacts;
    const size_t passedOver = std::erase_if(contacts, operations::holdsNothing);
    if (contacts.empty())
        job.out.error(u"%1: there is nothing in it but empty contacts."_s.arg(path));
    else if (passedOver != 0)
        job.out.note(u"%1 without anything in it passed over.\n"_s.arg(entryCount(passedOver)));
    return !contacts.empty();
}

/// Asks about what a phone may cut or refuse, if there is something. Where nobody is there to see the
/// question it is noted.
bool agreesToWarnings(Job& job, const Contacts& contacts)
{
    QString text;
    for (const tVcfEntry& contact : contacts) {
        for (const QString& warning : warningsAbout(contact))
            text += u"%1: %2\n"_s.arg(printable(contactName(contact)), printable(warning));
    }
    if (!job.questions.someoneIsThere() && job.questions.canBeAnswered())
        job.out.note(text);
    return text.isEmpty() ||
           job.questions.confirm(text + u"The phone may cut or refuse this. Write all the same?"_s);
}

bool isUnanswerable(Job& job, const QString& question)
{
    if (!job.questions.canBeAnswered())
        job.questions.tellUnanswered(question);
    return !job.questions.canBeAnswered();
}

/// Rows of the contacts with those LUIDs; empty if one is missing, which has been told.
QList<int> rowsOf(Job& job, const toolkit::ListRows& list, const QStringList& luids)
{
    QList<int> rows;
    for (const QString& luid : luids) {
        const int row = list.indexOfKey(phonedata::vcfKey(luid));
        if (row < 0) {
            job.out.error(
                u"there is no contact %1 in the phone; nothing was changed in it."_s.arg(printable(luid)));
            return {};
        }
        if (!phonedata::hasValidLuid(list.row(row))) {
            job.out.error(u"the phone gives no reference for the contact shown as %1; nothing was changed in "
                          u"it."_s.arg(printable(luid)));
            return {};
        }
        rows.append(row);
    }
    return rows;
}

QString nameIn(const toolkit::ListRows& list, int row)
{
    return printable(contactName(phonedata::vcfEntryFrom(list.row(row))));
}

} // namespace

ExitStatus runPhonebookAdd(Job& job)
{
    Contacts contacts;
    if (!readFile(job, job.invocation.arguments.first(), contacts))
        return ExitWrongUse;
    for (tVcfEntry& contact : contacts)
        contact.luid.clear(); // the phone gives a new one
    if (!agreesToWarnings(job, contacts))
        return ExitRefused;
    const auto hasRoom = [&](ContactBook& book) {
        const auto room = static_cast<size_t>(std::max(book.store().freePlaces(), 0));
        if (contacts.size() <= room)
            return ExitDone;
        if (book.store().lblVCFkap() == u'?') {
            job.out.error(u"the phone does not say how much room it has; nothing was changed in it."_s);
            return ExitFailed;
        }
        job.out.error(u"the phone has room for %1; nothing was changed in it."_s.arg(entryCount(room)));
        return ExitFailed;
    };
    return ContactChange(job, u"written"_s)
        .run(contacts.size(), hasRoom,
             [&](ContactBook& book, const toolkit::Progress& progress, Report& report) {
                 return book.store().VcfWriteList(contacts, progress, &report);
             });
}

ExitStatus runPhonebookSet(Job& job)
{
    const QString luid = job.invocation.arguments[0];
    Contacts contacts;
    if (!readFile(job, job.invocation.arguments[1], contacts))
        return ExitWrongUse;
    if (contacts.size() != 1) {
        job.out.error(
            u"%1 holds %2, not one."_s.arg(job.invocation.arguments[1], entryCount(contacts.size())));
        return ExitWrongUse;
    }
    contacts.front().luid = luid;
    if (isUnanswerable(job, u"Change a contact in the phone?"_s) || !agreesToWarnings(job, contacts))
        return ExitRefused;
    const auto agrees = [&](ContactBook& book) {
        const QList<int> rows = rowsOf(job, book.list(), {luid});
        if (rows.isEmpty())
            return ExitWrongUse;
        const bool goesOn = job.questions.confirm(u"Replace %1 by %2 in the phone?"_s.arg(
            nameIn(book.list(), rows.first()), printable(contactName(contacts.front()))));
        return goesOn ? ExitDone : ExitRefused;
    };
    return ContactChange(job, u"written"_s)
        .run(1, agrees, [&](ContactBook& book, const toolkit::Progress& progress, Report& report) {
            return book.store().VcfWriteList(contacts, progress, &report);
        });
}

ExitStatus runPhonebookDelete(Job& job)
{
    QStringList luids = job.invocation.arguments;
    luids.removeDuplicates();
    const auto count = static_cast<size_t>(luids.size());
    if (isUnanswerable(job, u"Delete %1 in the phone?"_s.arg(entryCount(count))))
        return ExitRefused;
    const auto agrees = [&](ContactBook& book) {
        const QList<int> rows = rowsOf(job, book.list(), luids);
        if (rows.isEmpty())
            return ExitWrongUse;
        QStringList names;
        for (const int row : rows) {
            book.list().setSelected(row, true);
            names.append(nameIn(book.list(), row));
        }
        const bool goesOn = job.questions.confirm(
            u"Delete %1 in the phone: %2?"_s.arg(entryCount(count), names.join(u", "_s)));
        return goesOn ? ExitDone : ExitRefused;
    };
    return ContactChange(job, u"deleted"_s)
        .run(count, agrees, [&](ContactBook& book, const toolkit::Progress& progress, Report& report) {
            return book.store().VcfDeleteRows(progress, &report);
        });
}

} // namespace kalmo::cli
