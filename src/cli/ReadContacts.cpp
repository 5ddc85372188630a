#include "cli/ReadContacts.h"

#include "cli/ContactWords.h"
#include "cli/DataWork.h"
#include "cli/OutputFile.h"
#include "cli/Tables.h"
#include "operations/CardLosses.h"
#include "operations/ContactEdit.h"
#include "operations/ContactFiles.h"
#include "operations/ContactPlan.h"
#include "operations/SavedText.h"

namespace kalmo::cli {

using operations::Contacts;
using phonedata::ContactReading;

namespace {

/// Nothing after a failure, which has been reported.
std::optional<ContactReading> readTwice(Job& job, const std::shared_ptr<obex::clsMmc>& client)
{
    const auto list = phonedata::makeVcfRows();
    const auto store = std::make_shared<phonedata::VcardStore>(client, *list);
    const toolkit::Progress progress{.bar = &job.progress, .cancel = &job.stop};
    job.progress.phase(u"Reading the phonebook"_s);
    phonedata::VcardStore::Session session(*store, u"VcfReadList"_s, progress);
    const auto tellAgain = [&job](const ContactReading& first) {
        job.progress.clear();
        job.out.note(u"Reading once more: %1.\n"_s.arg(countDoubt(first)));
        job.progress.phase(u"Reading the phonebook"_s);
    };
    const auto reading =
        session.open() ? operations::readUntilConfirmed(*store, progress, tellAgain) : std::nullopt;
    job.progress.clear();
    if (!reading && !job.stop.Checked())
        job.out.error(u"could not read the phonebook."_s);
    return reading;
}

/// Returns true if the file of `--output` can hold all letters of the contacts.
bool holdsAllLetters(const QString& path, const Contacts& contacts)
{
    operations::SavedList list{.kind = operations::SavedKind::Contacts, .contacts = contacts};
    return path.isEmpty() || !operations::endsIn(path, u".csv") || operations::bringsBack(path, list);
}

/// Notes the contacts of which the file of `--output` lacks what only their cards say.
void noteCutContacts(Job& job, const ContactReading& reading, const QString& path)
{
    const QStringList names = operations::contactsBeyondFields(reading.cards);
    if (!names.isEmpty() && !path.isEmpty() && !operations::endsIn(path, u".vcf"))
        job.out.note(u"%1 lacks a part of these contacts; a .vcf file would hold it: %2\n"_s.arg(
            path, printable(names.join(u", "_s))));
}

ExitStatus showReading(Job& job, const ContactReading& reading)
{
    const Contacts contacts = operations::contactsOf(reading);
    const QString path = job.invocation.value(u"--output"_s);
    const auto bytes = [&] {
        return operations::endsIn(path, u".vcf")
                   ? operations::contactCardBytes(reading)
                   : operations::savedListBytes(
                         path, {.kind = operations::SavedKind::Contacts, .contacts = contacts});
    };
    const bool isSaved = saveOutput(job, {contacts.size(), !reading.isConfirmed(), bytes});
    if (isSaved)
        noteCutContacts(job, reading, path);
    std::vector<QStringList> rows;
    for (const phonedata::tVcfEntry& contact : contacts)
        rows.push_back(contactCells(contact));
    if (path.isEmpty() || job.out.isJson())
        job.out.show(operations::contactJson(contacts), alignedTable(contactHeadings(), rows));
    if (!reading.isConfirmed()) {
        job.out.error(countDoubt(reading) + u", in the second reading too. Read again."_s);
        return ExitFailed;
    }
    if (!isSaved)
        return ExitFailed;
    if (contacts.empty() || holdsAllLetters(path, contacts))
        return ExitDone;
    job.out.error(u"%1 can't hold all texts as the phone does. Save them in a .json file too."_s.arg(path));
    return ExitFailed;
}

} // namespace

QString countDoubt(const ContactReading& reading)
{
    if (!reading.info)
        return u"the phone does not say how many contacts it holds"_s;
    return u"the phone says that it holds %1, but sent %2"_s.arg(reading.info->intBelegt)
        .arg(reading.arrived());
}

ExitStatus readPhoneContacts(Job& job, std::optional<ContactReading>& reading)
{
    return withClient(job, [&](const std::shared_ptr<obex::clsMmc>& client) {
        reading = readTwice(job, client);
        return reading ? ExitDone : brokenOff(job);
    });
}

ExitStatus showContacts(Job& job)
{
    std::optional<ContactReading> reading;
    const ExitStatus status = readPhoneContacts(job, reading);
    return status == ExitDone ? showReading(job, *reading) : status;
}

} // namespace kalmo::cli
