#include "cli/ContactBook.h"

#include "app/Files.h"
#include "cli/ContactWords.h"
#include "cli/DataWork.h"
#include "cli/OutputFile.h"
#include "cli/Tables.h"
#include "operations/ContactFiles.h"
#include "phonedata/BackupFiles.h"

namespace kalmo::cli {

using operations::Contacts;

ContactBook::ContactBook(Job& job, const std::shared_ptr<obex::clsMmc>& client)
    : m_job(job), m_list(phonedata::makeVcfRows()),
      m_store(std::make_shared<phonedata::VcardStore>(client, *m_list))
{
    m_store->leaveToOwner();
}

ExitStatus ContactBook::read()
{
    const ExitStatus status = readOnce();
    if (status != ExitDone || isWhole())
        return status;
    m_job.out.note(u"Reading once more: %1.\n"_s.arg(mismatch()));
    return readOnce();
}

ExitStatus ContactBook::readOnce()
{
    m_job.progress.phase(u"Reading the phonebook"_s);
    const bool done = m_store->VcfReadList({.bar = &m_job.progress, .cancel = &m_job.stop});
    m_job.progress.clear();
    if (done)
        return ExitDone;
    if (!m_job.stop.Checked())
        m_job.out.error(u"the phonebook could not be read."_s);
    return brokenOff(m_job);
}

Contacts ContactBook::contacts() const
{
    Contacts contacts;
    for (int index = 0; index < m_list->count(); ++index)
        contacts.push_back(phonedata::vcfEntryFrom(m_list->row(index)));
    return contacts;
}

bool ContactBook::backUp(QString& path)
{
    path.clear();
    if (m_list->count() == 0)
        return true;
    const QString place = phonedata::phoneCopyPath(m_job.context, u".json"_s);
    QString reason;
    if (app::writeWholeFile(
            place,
            operations::contactJsonBytes({.kind = operations::SavedKind::Contacts, .contacts = contacts()}),
            &reason)) {
        path = place;
        m_job.out.note(u"What the phone holds is saved in %1.\n"_s.arg(place));
        return true;
    }
    m_job.out.error(u"what the phone holds could not be saved in %1: %2.\n"
                    u"Nothing was changed in the phone."_s.arg(place, reason));
    return false;
}

bool ContactBook::isWhole() const
{
    bool isKnown = false;
    const int held = m_store->lblVCFbelegt().toInt(&isKnown);
    return !isKnown || m_list->count() == held;
}

QString ContactBook::mismatch() const
{
    return u"the phone says that it holds %1, but sent %2"_s.arg(m_store->lblVCFbelegt())
        .arg(m_list->count());
}

ExitStatus showContacts(Job& job)
{
    Contacts contacts;
    QString mismatch; // empty if all came
    const ExitStatus status = withClient(job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        ContactBook book(job, client);
        const ExitStatus read = book.read();
        contacts = book.contacts();
        mismatch = book.isWhole() ? QString() : book.mismatch();
        return read;
    });
    if (status != ExitDone)
        return status;
    const QString path = job.invocation.value(u"--output"_s);
    const auto bytes = [&] {
        return operations::savedListBytes(path,
                                          {.kind = operations::SavedKind::Contacts, .contacts = contacts});
    };
    const bool isSaved = saveOutput(job, {contacts.size(), !mismatch.isEmpty(), bytes});
    std::vector<QStringList> rows;
    for (const phonedata::tVcfEntry& contact : contacts)
        rows.push_back(contactCells(contact));
    if (path.isEmpty() || job.out.isJson())
        job.out.show(operations::contactJson(contacts), alignedTable(contactHeadings(), rows));
    if (mismatch.isEmpty())
        return isSaved ? ExitDone : ExitFailed;
    job.out.error(mismatch + u", in the second reading too. Read again."_s);
    return ExitFailed;
}

} // namespace kalmo::cli
